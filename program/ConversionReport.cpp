#include "program/ConversionReport.h"

#include "base/PathBytes.h"

#include <cstdio>

namespace quillow {
namespace {

QString counted(int count) {
    return count == 1 ? QStringLiteral("1 document") : QStringLiteral("%1 documents").arg(count);
}

} // namespace

void ConversionReport::tell(std::string_view line) const {
    std::fprintf(stderr, "quillow: %s: %.*s\n", pathToBytes(document_).constData(), static_cast<int>(line.size()),
                 line.data());
}

void ConversionReport::documentBegins(const QString& path) {
    // The entries of the batch, and the problems of its texts, come into the queue after this operation. So the end of
    // the batch is queued by it.
    if (outcome_ == Outcome()) mainQueue_.addOperation([this] { mainQueue_.addOperation([this] { endBatch(); }); });
    document_ = path;
    if (progressHandler_) progressHandler_(outcome_.documents);
    ++outcome_.documents;
}

void ConversionReport::documentEnds(const QString&, Result result, const QString&) {
    if (result == Result::notConverted) ++outcome_.notConverted;
}

void ConversionReport::textNotWritten(const QString& path, const QString& text, const QString& cause) {
    ++outcome_.notWritten;
    std::fprintf(stderr, "quillow: %s: the text is not written to %s: %s\n", pathToBytes(path).constData(),
                 pathToBytes(text).constData(), cause.toLocal8Bit().constData());
}

void ConversionReport::endBatch() {
    const Outcome outcome = std::exchange(outcome_, {});
    if (handler_) handler_(outcome);
}

std::pair<QString, QString> notificationTexts(const Outcome& outcome) {
    const int converted = outcome.documents - outcome.notConverted;
    QStringList failures;
    if (outcome.notConverted > 0) failures.append(QStringLiteral("%1 not converted").arg(outcome.notConverted));
    if (outcome.notWritten > 0) failures.append(QStringLiteral("%1 not written").arg(outcome.notWritten));
    return {counted(converted) + QStringLiteral(" converted"), failures.join(QStringLiteral(", "))};
}

} // namespace quillow
