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
    std::optional<QUrl> directoryURL; ///< where it starts; nothing leaves it to the platform
    bool canChooseDirectories = false;
    bool canChooseFiles = true;
    /// Extensions that may be chosen, without dots; an empty list, or one that holds the empty string, means any file.
    QStringList allowedFileTypes;
    QString prompt;  ///< text of the default button
    QString message; ///< one line above the list
    friend bool operator==(const OpenPanel&, const OpenPanel&) = default;
};

class Panels {
public:
    virtual ~Panels() = default;

    /// Shows the panel as a sheet on the window (on its own when the window is null) and returns at once.
    /// `completionHandler` gets the chosen file URL, or nothing when the panel was cancelled; it is called exactly once,
    /// never before this function has returned. A panel that is begun while an equal one is open on the same window may be
    /// cancelled without being shown, right after the open one's handler has returned.
    virtual void beginSheetModalForWindow(const OpenPanel& panel, Window* window,
                                          std::function<void(const std::optional<QUrl>& url)> completionHandler) = 0;
};

} // namespace quillow
