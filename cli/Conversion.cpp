#include "cli/Conversion.h"

#include "cli/Input.h"

#include <new>

namespace quillow::cli {

namespace {

Result failed(Reason reason, std::string detail) {
    Result result;
    result.reason = reason;
    result.detail = std::move(detail);
    return result;
}

Result notAccepted(std::string detail) {
    Result result = failed(Reason::wrongType, std::move(detail));
    result.acceptance = Acceptance::notAccepted;
    return result;
}

Result extracted(InputDocument& input, const PlannedDocument& document, const Options& options) {
    std::optional<DocumentKind> kind = input.kind == InputKind::bundle ? DocumentKind::rtfd : document.kind;
    if (!kind) kind = sniffDocumentKind(input.bytes.view());
    if (!kind && input.bytes.view().empty()) return failed(Reason::damaged, "the input is empty");
    if (!kind) return notAccepted("neither name nor content is that of an RTF, HTML or PDF document");
    Extraction extraction = extract(input.bytes.view(), *kind, options, [&input] { input.bytes.release(); });
    if (input.bytes.haveChanged()) return failed(Reason::unreadable, "it was changed while it was read");
    Result result;
    result.reason = extraction.reason;
    result.detail = std::move(extraction.detail);
    result.text = std::move(extraction.text);
    result.pages = extraction.pages;
    result.textBytes = result.text ? result.text->size() : 0;
    return result;
}

Result readAndExtract(const PlannedDocument& document, const Options& options) {
    InputOutcome input = document.path == kStandardInput ? readStandardInput() : readInput(document.path);
    if (auto* const failure = std::get_if<InputFailure>(&input))
        return failed(failure->reason, std::move(failure->detail));
    return extracted(std::get<InputDocument>(input), document, options);
}

} // namespace

Result convert(const PlannedDocument& document, const Options& options, const OutputFolder* outputFolder) {
    try {
        Result result = readAndExtract(document, options);
        if (!hasText(result.reason)) result.text.reset();
        if (outputFolder == nullptr || !result.text) return result;
        if (auto failure = outputFolder->write(*document.fileName, *result.text))
            return failed(Reason::unwritable, *document.fileName + ": " + failure->detail);
        result.text.reset();
        return result;
    } catch (const std::bad_alloc&) {
        return failed(Reason::outOfMemory, {});
    }
}

} // namespace quillow::cli
