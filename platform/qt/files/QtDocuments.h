// The document controller of a program that has no documents of its own: a new document is its window, to open one is to
// convert it.
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
        std::function<void(const QStringList& paths)> convertPaths; ///< the road of a drop
    };

    explicit QtDocuments(Window& mainWindow)
        : mainWindow_(mainWindow) {}
    void setRoads(const Roads& roads) { roads_ = roads; }

    /// Documents are converted and let go.
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
