#include "platform/engine/EngineTextReaders.h"

#include <new>
#include <string>

namespace quillow {
namespace {

std::string_view kindName(DocumentKind kind) {
    switch (kind) {
    case DocumentKind::rtf:
    case DocumentKind::rtfd: return "RTF";
    case DocumentKind::html: return "HTML";
    case DocumentKind::pdf: return "PDF";
    }
    return "";
}

std::string reasonLine(DocumentKind kind, const Extraction& extraction) {
    std::string line(kindName(kind));
    line.append(" document: ").append(reasonName(extraction.reason));
    if (!extraction.detail.empty()) line.append(": ").append(extraction.detail);
    return line;
}

} // namespace

DocumentExtractor::DocumentExtractor(ReasonLog reasonLog, Extract extract)
    : extract_(std::move(extract))
    , reasonLog_(std::move(reasonLog)) {}

std::optional<QByteArray> DocumentExtractor::textOf(const QByteArray& bytes, DocumentKind kind) const {
    try {
        const Extraction extraction =
            extract_(std::as_bytes(std::span(bytes.constData(), static_cast<std::size_t>(bytes.size()))), kind);
        const bool isWhole = extraction.reason == Reason::ok || extraction.reason == Reason::okEmpty;
        if (!isWhole && reasonLog_) reasonLog_(reasonLine(kind, extraction));
        if (!extraction.text) return std::nullopt;
        return QByteArray(extraction.text->data(), static_cast<qsizetype>(extraction.text->size()));
    } catch (const std::bad_alloc&) {
        // The engine reports its own lack of memory. This handler is for the copy of a long text.
        Extraction nothing;
        nothing.reason = Reason::outOfMemory;
        if (reasonLog_) reasonLog_(reasonLine(kind, nothing));
        return std::nullopt;
    }
}

std::optional<AttributedString> EngineRtfTextReader::initWithRTF(const std::optional<QByteArray>& bytes) {
    if (!bytes) return std::nullopt;
    std::optional<QByteArray> text = extractor_.textOf(*bytes, DocumentKind::rtf);
    if (!text) return std::nullopt;
    return AttributedString{std::move(*text)};
}

std::optional<AttributedString> EngineHtmlTextReader::initWithHTML(const QByteArray& bytes) {
    std::optional<QByteArray> text = extractor_.textOf(bytes, DocumentKind::html);
    if (!text) return std::nullopt;
    return AttributedString{std::move(*text)};
}

std::optional<QByteArray> EnginePdfTextReader::stringOfPDF(const QByteArray& bytes) {
    return extractor_.textOf(bytes, DocumentKind::pdf);
}

} // namespace quillow
