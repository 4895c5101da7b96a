// The one door: sends a document to its engine, and says what a document is that its engine cannot be meant for.
#include "engines/Extract.h"

#include "engines/ContentSniffer.h"
#include "engines/html/Reader.h"
#include "engines/pdf/Reader.h"
#include "engines/rtf/Reader.h"

#include <new>
#include <stdexcept>

namespace quillow {

namespace {

using Bytes = std::span<const std::byte>;

Extraction failure(Reason reason, std::string detail) {
    Extraction extraction;
    extraction.reason = reason;
    extraction.detail = std::move(detail);
    return extraction;
}

Extraction wrongType(std::string_view description) {
    return failure(Reason::wrongType, "the content is " + std::string(description));
}

/// What the content is, when it plainly is something else than the kind it came as.
std::optional<std::string_view> otherContent(Bytes bytes, DocumentKind kind) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::optional<DocumentKind> sniffed = sniffDocumentKind(bytes);
    if (!sniffed) return describeForeignContent(bytes);
    if (sniffed == kind || (sniffed == DocumentKind::rtf && kind == DocumentKind::rtfd)) return std::nullopt;
    // A text that only mentions a PDF header further on stays a text.
    if (sniffed == DocumentKind::pdf && !startsAsPdf(text)) return std::nullopt;
    return describeKind(*sniffed);
}

/// RTF and HTML take nearly any bytes as text, so what plainly is another kind never reaches them.
Extraction readTolerantKind(Bytes bytes, DocumentKind kind, const Options& options, const BytesDone& bytesDone) {
    if (const auto other = otherContent(bytes, kind)) return wrongType(*other);
    return kind == DocumentKind::html ? html::readHtml(bytes, options, bytesDone) : rtf::readRtf(bytes, options);
}

/// A PDF may carry any junk before its header: the engine is asked first, and its failure explained.
Extraction readPdfKind(Bytes bytes, const Options& options) {
    Extraction extraction = pdf::readPdf(bytes, options);
    if (extraction.reason != Reason::damaged) return extraction;
    if (const auto other = otherContent(bytes, DocumentKind::pdf)) return wrongType(*other);
    return extraction;
}

Extraction dispatch(Bytes bytes, DocumentKind kind, const Options& options, const BytesDone& bytesDone) {
    if (bytes.empty() && kind != DocumentKind::html) return failure(Reason::damaged, "the file is empty");
    if (bytes.empty()) {
        Extraction extraction;
        extraction.reason = Reason::okEmpty;
        extraction.text.emplace();
        return extraction;
    }
    return kind == DocumentKind::pdf ? readPdfKind(bytes, options) : readTolerantKind(bytes, kind, options, bytesDone);
}

} // namespace

std::string_view reasonName(Reason reason) {
    switch (reason) {
    case Reason::ok: return "ok";
    case Reason::okEmpty: return "ok-empty";
    case Reason::noTextLayer: return "no-text-layer";
    case Reason::partial: return "partial";
    case Reason::wrongType: return "wrong-type";
    case Reason::damaged: return "damaged";
    case Reason::locked: return "locked";
    case Reason::tooLarge: return "too-large";
    case Reason::timeout: return "timeout";
    case Reason::outOfMemory: return "out-of-memory";
    case Reason::crashed: return "crashed";
    case Reason::unreadable: return "unreadable";
    case Reason::unwritable: return "unwritable";
    case Reason::skipped: return "skipped";
    }
    return "damaged";
}

Extraction extract(std::span<const std::byte> bytes, DocumentKind kind, const Options& options,
                   const BytesDone& bytesDone) {
    // The engines throw nothing of their own; the standard library does when memory ends, and that is one document's
    // failure, not the program's.
    try {
        return dispatch(bytes, kind, options, bytesDone);
    } catch (const std::bad_alloc&) {
        return failure(Reason::outOfMemory, "the document needs more memory than there is");
    } catch (const std::length_error&) {
        return failure(Reason::tooLarge, "the text is too long");
    }
}

} // namespace quillow
