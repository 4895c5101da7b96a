// The document controller of a program without documents of its own: "new document" shows its window, "open document"
// converts.
#pragma once

#include "base/PathStrings.h"
#include "platform/Documents.h"
#include "platform/Window.h"

#include <QStringList>

#include <functional>
#include <utility>

namespace quillow {

class QtDocuments final : public Documents {
public:
    struct Roads {
        std::function<void()> chooseDocuments;                      ///< shows the open dialog
        std::function<void(const QStringList& paths)> convertPaths; ///< converts as for a drop
    };

    explicit QtDocuments(Window& mainWindow)
        : mainWindow_(mainWindow) {}
    void setRoads(const Roads& roads) { roads_ = roads; }

    /// Always 0: documents are converted and not kept open.
    [[nodiscard]] int count() const override { return 0; }
    void newDocument() override { mainWindow_.makeKeyAndOrderFront(); }
    void openDocument() override {
        mainWindow_.makeKeyAndOrderFront();
        if (roads_.chooseDocuments) roads_.chooseDocuments();
    }
    void openDocumentWithContentsOfURL(const QUrl& url, Display display,
                                       std::function<void()> completionHandler) override {
        if (display == Display::yes) mainWindow_.makeKeyAndOrderFront();
        if (roads_.convertPaths && url.isLocalFile()) roads_.convertPaths({pathOfURL(url)});
        if (completionHandler) completionHandler();
    }

private:
    Window& mainWindow_;
    Roads roads_;
};

} // namespace quillow
