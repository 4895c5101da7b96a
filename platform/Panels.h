// Port: the panel in which the user chooses files or folders.
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

namespace quillow {

class Window;

struct OpenPanel {
    std::optional<QUrl> directoryURL; ///< the initial folder; without one, the platform chooses
    bool canChooseDirectories = false;
    bool canChooseFiles = true;
    /// Permitted extensions, without dots. An empty list, or a list that contains the empty string, permits any file.
    QStringList allowedFileTypes;
    QString prompt;  ///< text of the default button
    QString message; ///< one line above the list
    friend bool operator==(const OpenPanel&, const OpenPanel&) = default;
};

class Panels {
public:
    virtual ~Panels() = default;

    /// Shows the panel as a sheet on the window (as a separate dialog if the window is null) and returns at once.
    /// `completionHandler` gets the chosen file URL, or std::nullopt if the user cancelled. It is called exactly
    /// once, never before this function has returned. If an equal panel is already open on the same window, the
    /// adapter may cancel the new one without showing it, right after the open one's handler has returned.
    virtual void beginSheetModalForWindow(const OpenPanel& panel, Window* window,
                                          std::function<void(const std::optional<QUrl>& url)> completionHandler) = 0;
};

} // namespace quillow
