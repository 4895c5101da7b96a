// Sends a document to its engine. Handles what is the same for all engines: empty input, content of another kind, and
// lack of memory.
#include "engines/Extract.h"

#include "engines/ContentSniffer.h"
#include "engines/html/Reader.h"
#include "engines/pdf/Reader.h"
#include "engines/pdf/crypt/Ciphers.h"
#include "engines/rtf/Reader.h"

#include <new>
#include <stdexcept>

namespace quillow {

namespace {

using Bytes = std::span<const std::byte>;

Extraction wrongType(std::string_view description) {
    return failed(Reason::wrongType, "the content is " + std::string(description));
}

/// The RTF and HTML engines read nearly any bytes as text, so content that plainly is of another kind must not reach
/// them.
Extraction readTolerantKind(Bytes bytes, DocumentKind kind, const Options& options, const BytesDone& bytesDone) {
    if (const auto other = describeOtherContent(bytes, kind)) return wrongType(*other);
    return kind == DocumentKind::html ? html::readHtml(bytes, options, bytesDone)
                                      : rtf::readRtf(bytes, options, bytesDone);
}

/// A PDF may have any junk before its header, so the content is judged only after the engine has failed.
Extraction readPdfKind(Bytes bytes, const Options& options, const BytesDone& bytesDone) {
    Extraction extraction = pdf::readPdf(bytes, options, bytesDone);
    if (extraction.reason != Reason::damaged) return extraction;
    if (const auto other = describeOtherContent(bytes, DocumentKind::pdf)) return wrongType(*other);
    return extraction;
}

Extraction dispatch(Bytes bytes, DocumentKind kind, const Options& options, const BytesDone& bytesDone) {
    if (bytes.empty() && kind != DocumentKind::html) return failed(Reason::damaged, "the file is empty");
    if (bytes.empty()) {
        Extraction extraction;
        extraction.reason = Reason::okEmpty;
        extraction.text.emplace();
        return extraction;
    }
    return kind == DocumentKind::pdf ? readPdfKind(bytes, options, bytesDone)
                                     : readTolerantKind(bytes, kind, options, bytesDone);
}

} // namespace

Extraction extract(std::span<const std::byte> bytes, DocumentKind kind, const Options& options,
                   const BytesDone& bytesDone) {
    // The engines throw nothing themselves, but the standard library does when memory runs out. Only this document then
    // fails, not the program.
    try {
        return dispatch(bytes, kind, options, bytesDone);
    } catch (const std::bad_alloc&) {
        return failed(Reason::outOfMemory, "the document needs more memory than there is");
    } catch (const std::length_error&) {
        return failed(Reason::tooLarge, "the text is too long");
    }
}

void loadLibraries() {
    static_cast<void>(pdf::hasCiphers());
}

} // namespace quillow
