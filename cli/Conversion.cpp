#include "cli/Conversion.h"

#include "cli/Input.h"
#include "engines/ContentSniffer.h"

#include <new>

namespace quillow::cli {

namespace {

Result withoutText(Reason reason, std::string detail) {
    Result result;
    result.reason = reason;
    result.detail = std::move(detail);
    return result;
}

Result notAccepted(std::span<const std::byte> content) {
    const auto described = describeForeignContent(content);
    Result result =
        withoutText(Reason::wrongType, described ? "the content is " + std::string(*described)
                                                 : "neither name nor content is that of an RTF, HTML or PDF document");
    result.acceptance = Acceptance::notAccepted;
    return result;
}

/// The extraction; where a password is needed and may be asked for, a second one with it.
Extraction extractAsking(InputDocument& input, DocumentKind kind, unsigned threads, const Arguments& arguments,
                         DocumentReader& reader, PasswordPrompt& prompt) {
    const auto read = [&](const Options& options) {
        if (arguments.explainedPage) return reader.explain(input.bytes, kind, *arguments.explainedPage, options);
        return reader.read(input.bytes, kind, options);
    };
    Options options = arguments.options;
    options.threads = threads;
    Extraction extraction = read(options);
    if (extraction.reason != Reason::locked || arguments.askForPassword == AskForPassword::never) return extraction;
    options.password = prompt.password();
    return options.password.empty() ? extraction : read(options);
}

Result extracted(InputDocument& input, const PlannedDocument& document, const Arguments& arguments,
                 DocumentReader& reader, PasswordPrompt& prompt) {
    std::optional<DocumentKind> kind = input.kind == InputKind::bundle ? DocumentKind::rtfd : document.kind;
    if (!kind) kind = sniffDocumentKind(input.bytes.view());
    if (!kind && input.bytes.view().empty()) return withoutText(Reason::damaged, "the input is empty");
    if (!kind) return notAccepted(input.bytes.view());
    Extraction extraction = extractAsking(input, *kind, document.threads, arguments, reader, prompt);
    if (input.bytes.haveChanged()) return withoutText(Reason::unreadable, "it was changed while it was read");
    Result result;
    result.reason = extraction.reason;
    result.detail = std::move(extraction.detail);
    result.text = std::move(extraction.text);
    result.pages = extraction.pages;
    result.textBytes = result.text ? result.text->size() : 0;
    return result;
}

Result readAndExtract(const PlannedDocument& document, const Arguments& arguments, DocumentReader& reader,
                      PasswordPrompt& prompt) {
    const Reading reading = document.kind ? Reading::whole : Reading::recognised;
    InputOutcome input = document.path == kStandardStream ? readStandardInput(reading)
                                                          : readInput(document.path, reading, arguments.readIn);
    if (auto* const failure = std::get_if<InputFailure>(&input))
        return withoutText(failure->reason, std::move(failure->detail));
    return extracted(std::get<InputDocument>(input), document, arguments, reader, prompt);
}

bool isLater(const timespec& time, const timespec& than) {
    return time.tv_sec != than.tv_sec ? time.tv_sec > than.tv_sec : time.tv_nsec > than.tv_nsec;
}

/// The result, if an existing file with the text's name decides it before the document is read.
std::optional<Result> decidedByExistingText(const PlannedDocument& document, IfExists ifExists,
                                            const OutputFolder& folder) {
    if (ifExists == IfExists::overwrite || ifExists == IfExists::rename) return std::nullopt;
    const auto written = folder.changeTime(*document.textName);
    if (!written) return std::nullopt;
    if (ifExists == IfExists::error) return withoutText(Reason::unwritable, *document.textName + ": File exists");
    if (ifExists == IfExists::skip) return withoutText(Reason::skipped, *document.textName + " already exists");
    // Standard input has no modification time; it counts as new.
    const auto changed = document.path == kStandardStream ? std::nullopt : changeTime(document.path);
    if (!changed || isLater(*changed, *written)) return std::nullopt;
    return withoutText(Reason::skipped, *document.textName + " is not older");
}

Result written(Result result, const PlannedDocument& document, IfExists ifExists, const OutputFolder& folder) {
    const bool replaces = ifExists == IfExists::overwrite || ifExists == IfExists::newer;
    const auto failure = folder.write(*document.textName, *result.text, replaces ? Present::replaced : Present::kept);
    // Another program created the file while the document was read: skip applies to it too.
    if (failure && failure->nameIsInUse && ifExists == IfExists::skip)
        return withoutText(Reason::skipped, *document.textName + " already exists");
    if (failure) return withoutText(Reason::unwritable, *document.textName + ": " + failure->detail);
    result.text.reset();
    return result;
}

Result convertUnguarded(const PlannedDocument& document, const Arguments& arguments, DocumentReader& reader,
                        PasswordPrompt& prompt, const OutputFolder* folder) {
    if (document.failure) return withoutText(document.failure->reason, document.failure->detail);
    if (folder != nullptr)
        if (auto decided = decidedByExistingText(document, arguments.ifExists, *folder)) return std::move(*decided);
    Result result = readAndExtract(document, arguments, reader, prompt);
    if (!hasText(result.reason)) result.text.reset();
    if (folder == nullptr || !result.text) return result;
    return written(std::move(result), document, arguments.ifExists, *folder);
}

} // namespace

Result convert(const PlannedDocument& document, const Arguments& arguments, DocumentReader& reader,
               PasswordPrompt& prompt, const OutputFolder* outputFolder) {
    try {
        return convertUnguarded(document, arguments, reader, prompt, outputFolder);
    } catch (const std::bad_alloc&) {
        return withoutText(Reason::outOfMemory, {});
    }
}

} // namespace quillow::cli
