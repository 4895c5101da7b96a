#include "engines/Explain.h"

#include "engines/ContentSniffer.h"
#include "engines/pdf/explain/PageExplanation.h"

#include <new>
#include <stdexcept>

namespace quillow {

namespace {

Extraction explainUnguarded(std::span<const std::byte> bytes, DocumentKind kind, std::size_t page,
                            const Options& options) {
    if (kind != DocumentKind::pdf) return failed(Reason::wrongType, "only pages of PDFs can be explained");
    if (bytes.empty()) return failed(Reason::damaged, "the file is empty");
    Extraction extraction = pdf::explainPage(bytes, page, options);
    if (extraction.reason != Reason::damaged) return extraction;
    if (const auto other = describeOtherContent(bytes, DocumentKind::pdf))
        return failed(Reason::wrongType, "the content is " + std::string(*other));
    return extraction;
}

} // namespace

Extraction explain(std::span<const std::byte> bytes, DocumentKind kind, std::size_t page, const Options& options) {
    try {
        return explainUnguarded(bytes, kind, page, options);
    } catch (const std::bad_alloc&) {
        return failed(Reason::outOfMemory, "the document needs more memory than there is");
    } catch (const std::length_error&) {
        return failed(Reason::tooLarge, "the picture is too large");
    }
}

} // namespace quillow
