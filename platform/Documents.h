// Port: the controller of an application's documents.
#pragma once

#include <QUrl>

#include <functional>

namespace quillow {

enum class Display { no, yes };

class Documents {
public:
    virtual ~Documents() = default;
    /// How many documents are open.
    [[nodiscard]] virtual int count() const = 0;
    virtual void newDocument() = 0;
    /// Shows the open dialog.
    virtual void openDocument() = 0;
    /// Opens the item at the URL. `completionHandler` runs when that has finished, successfully or not.
    virtual void openDocumentWithContentsOfURL(const QUrl& url, Display display,
                                               std::function<void()> completionHandler) = 0;
};

} // namespace quillow
