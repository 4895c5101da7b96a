// A document controller that records its calls. The test decides when the opening of a document ends.
#pragma once

#include "platform/Documents.h"
#include "tests/fakes/Journal.h"

#include <QString>

#include <deque>
#include <utility>

namespace quillow {

class FakeDocuments final : public Documents {
public:
    explicit FakeDocuments(Journal& journal)
        : journal_(journal) {}

    [[nodiscard]] int count() const override { return count_; }
    void newDocument() override { journal_.add(QStringLiteral("new document")); }
    void openDocument() override { journal_.add(QStringLiteral("open dialog")); }
    void openDocumentWithContentsOfURL(const QUrl& url, Display display,
                                       std::function<void()> completionHandler) override {
        journal_.add(QStringLiteral("open document ") + url.toLocalFile() +
                     (display == Display::yes ? QStringLiteral(" with display") : QString()));
        opening_.push_back(std::move(completionHandler));
    }

    void setCount(int count) { count_ = count; }
    void finishOpening() {
        const auto completionHandler = std::move(opening_.at(0));
        opening_.pop_front();
        completionHandler();
    }

private:
    Journal& journal_;
    int count_ = 0;
    std::deque<std::function<void()>> opening_;
};

} // namespace quillow
