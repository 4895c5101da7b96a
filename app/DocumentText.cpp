#include "app/DocumentText.h"

#include "base/Format.h"
#include "base/PathStrings.h"
#include "platform/FileSystem.h"

#include <utility>

namespace quillow {
namespace {

DocumentText::Outcome styled(std::optional<AttributedString> text) {
    DocumentText::Outcome outcome;
    if (text) outcome.end = DocumentText::End::text;
    outcome.styledText = std::move(text);
    return outcome;
}

DocumentText::Outcome pdf(std::optional<QByteArray> text) {
    DocumentText::Outcome outcome;
    if (text) outcome.end = DocumentText::End::text;
    outcome.pdfText = std::move(text);
    return outcome;
}

} // namespace

std::optional<DocumentKind> DocumentText::kindOf(const QString& path) {
    return documentKindForExtension(lowercaseString(pathExtension(path)).toStdString());
}

DocumentText::Outcome DocumentText::read(const QString& path) const {
    const std::optional<DocumentKind> kind = kindOf(path);
    if (!kind) return {};
    if (*kind == DocumentKind::rtf) return readRtf(path);
    if (*kind == DocumentKind::rtfd) return readRtf(stringWithFormat(QStringLiteral("%@/TXT.rtf"), {path}));
    const std::optional<QByteArray> bytes = ports_.fileSystem.contentsOfFile(path);
    if (!bytes && ports_.fileSystem.isTooLarge(path)) return {};
    if (!bytes) return {End::bytesUnreadable, std::nullopt, std::nullopt};
    if (*kind == DocumentKind::pdf) return pdf(ports_.pdfTextReader.stringOfPDF(*bytes));
    return styled(ports_.htmlTextReader.initWithHTML(*bytes));
}

DocumentText::Outcome DocumentText::readRtf(const QString& path) const {
    // deliberate: unreadable bytes reach the reader as absent ones; it alone decides whether there is a text.
    return styled(ports_.rtfTextReader.initWithRTF(ports_.fileSystem.contentsOfFile(path)));
}

} // namespace quillow
