// What became of the documents: problems go to standard error in lines that name the document, and the outcome of each
// drop or batch to a handler.
#pragma once

#include "base/Outcome.h"
#include "platform/ConversionWatcher.h"
#include "platform/MainQueue.h"

#include <functional>
#include <string_view>
#include <utility>

namespace quillow {

class ConversionReport final : public ConversionWatcher {
public:
    explicit ConversionReport(MainQueue& mainQueue)
        : mainQueue_(mainQueue) {}

    /// Called after the log has its entries, once for all documents of one drop or batch.
    void setHandler(std::function<void(const Outcome& outcome)> handler) { handler_ = std::move(handler); }

    /// Called before a document is read, with the number of documents before it in its drop or batch.
    void setProgressHandler(std::function<void(int documentsBefore)> handler) { progressHandler_ = std::move(handler); }

    /// Writes a line about the document that is being read. May be called from the thread that reads it.
    void tell(std::string_view line) const;

    void documentBegins(const QString& path) override;
    void documentEnds(const QString& path, Result result, const QString& text) override;
    void textNotWritten(const QString& path, const QString& text, const QString& cause) override;

private:
    void endBatch();

    MainQueue& mainQueue_;
    std::function<void(const Outcome&)> handler_;
    std::function<void(int)> progressHandler_;
    QString document_;
    Outcome outcome_;
};

/// The two lines of a notification about a batch.
[[nodiscard]] std::pair<QString, QString> notificationTexts(const Outcome& outcome);

} // namespace quillow
