// What became of the documents: problems go to standard error in lines that name the document, and the totals of each
// drop or batch to a handler.
#pragma once

#include "platform/ConversionWatcher.h"
#include "platform/MainQueue.h"

#include <functional>
#include <string_view>
#include <utility>

namespace quillow {

class ConversionReport final : public ConversionWatcher {
public:
    struct Totals {
        int documents = 0;
        int notConverted = 0;
        int notWritten = 0; ///< the log counts them as converted
        friend bool operator==(const Totals&, const Totals&) = default;
    };

    explicit ConversionReport(MainQueue& mainQueue)
        : mainQueue_(mainQueue) {}

    /// Called after the log has its entries, once for all documents of one drop or batch.
    void setHandler(std::function<void(const Totals& totals)> handler) { handler_ = std::move(handler); }

    /// Writes a line about the document that is being read. May be called from the thread that reads it.
    void tell(std::string_view line) const;

    void documentBegins(const QString& path) override;
    void documentEnds(const QString& path, Result result, const QString& text) override;
    void textNotWritten(const QString& path, const QString& text, const QString& cause) override;

private:
    void endBatch();

    MainQueue& mainQueue_;
    std::function<void(const Totals&)> handler_;
    QString document_;
    Totals totals_;
};

/// The two lines of a notification about a batch.
[[nodiscard]] std::pair<QString, QString> notificationTexts(const ConversionReport::Totals& totals);

} // namespace quillow
