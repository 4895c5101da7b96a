#include "cli/Conversion.h"

#include "cli/Input.h"
#include "engines/ContentSniffer.h"

#include <algorithm>
#include <chrono>
#include <new>

namespace quillow::cli {

namespace {

Result withoutText(Reason reason, std::string detail) {
    Result result;
    result.reason = reason;
    result.detail = std::move(detail);
    return result;
}

/// The same document, but no text is written.
Result withoutText(Result result, Reason reason, std::string detail) {
    result.reason = reason;
    result.detail = std::move(detail);
    result.text.reset();
    result.textHash.reset();
    result.textBytes = result.characters = 0;
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

bool isLater(const timespec& time, const timespec& than) {
    return time.tv_sec != than.tv_sec ? time.tv_sec > than.tv_sec : time.tv_nsec > than.tv_nsec;
}

std::uint64_t codePointsOf(std::string_view utf8) {
    return static_cast<std::uint64_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

double millisecondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

} // namespace

/// The extraction; where a password is needed and may be asked for, a second one with it.
Extraction Converter::extractAsking(InputDocument& input, DocumentKind kind, unsigned threads) {
    const auto read = [&](const Options& options) {
        if (arguments_.explainedPage) return reader_.explain(input.bytes, kind, *arguments_.explainedPage, options);
        return reader_.read(input.bytes, kind, options);
    };
    Options options = arguments_.options;
    options.threads = threads;
    Extraction extraction = read(options);
    if (extraction.reason != Reason::locked || arguments_.askForPassword == AskForPassword::never) return extraction;
    options.password = prompt_.password();
    return options.password.empty() ? extraction : read(options);
}

Result Converter::extracted(InputDocument& input, const PlannedDocument& document) {
    std::optional<DocumentKind> kind = input.kind == InputKind::bundle ? DocumentKind::rtfd : document.kind;
    if (!kind) kind = sniffDocumentKind(input.bytes.view());
    if (!kind && input.bytes.view().empty()) return withoutText(Reason::damaged, "the input is empty");
    if (!kind) return notAccepted(input.bytes.view());
    Result result;
    // The reader may release the bytes.
    if (sha256_) result.documentHash = sha256_->hexOf(input.bytes.view());
    Extraction extraction = extractAsking(input, *kind, document.threads);
    if (input.bytes.haveChanged()) return withoutText(Reason::unreadable, "it was changed while it was read");
    result.reason = extraction.reason;
    result.detail = std::move(extraction.detail);
    result.pages = extraction.pages;
    result.loss = extraction.loss;
    if (!hasText(extraction.reason) || !extraction.text) return result;
    result.text = std::move(extraction.text);
    result.textBytes = result.text->size();
    if (!sha256_) return result;
    result.textHash = sha256_->hexOf(*result.text);
    result.characters = codePointsOf(*result.text);
    return result;
}

Result Converter::readAndExtract(const PlannedDocument& document) {
    const Reading reading = document.kind ? Reading::whole : Reading::recognised;
    InputOutcome input = document.path == kStandardStream ? readStandardInput(reading)
                                                          : readInput(document.path, reading, arguments_.readIn);
    if (auto* const failure = std::get_if<InputFailure>(&input))
        return withoutText(failure->reason, std::move(failure->detail));
    return extracted(std::get<InputDocument>(input), document);
}

/// The result, if an existing file with the text's name decides it before the document is read.
std::optional<Result> Converter::decidedByExistingText(const PlannedDocument& document) const {
    const IfExists ifExists = arguments_.ifExists;
    if (ifExists == IfExists::overwrite || ifExists == IfExists::rename) return std::nullopt;
    const auto written = folder_->changeTime(*document.textName);
    if (!written) return std::nullopt;
    if (ifExists == IfExists::error) {
        // The text may be that of a run that was killed before it noted the result; only reading tells.
        if (arguments_.isResumed()) return std::nullopt;
        return withoutText(Reason::unwritable, *document.textName + ": File exists");
    }
    if (ifExists == IfExists::skip) return withoutText(Reason::skipped, *document.textName + " already exists");
    // Standard input has no modification time; it counts as new.
    const auto changed = document.path == kStandardStream ? std::nullopt : changeTime(document.path);
    if (!changed || isLater(*changed, *written)) return std::nullopt;
    return withoutText(Reason::skipped, *document.textName + " is not older");
}

std::optional<std::string> Converter::writtenEarlier(const PlannedDocument& document, const std::string& text) const {
    if (!arguments_.isResumed()) return std::nullopt;
    if (arguments_.ifExists == IfExists::error && folder_->holds(*document.textName, text)) return document.textName;
    for (const std::string& name : document.existingNames)
        if (folder_->holds(name, text)) return name;
    return std::nullopt;
}

Result Converter::written(Result result, const PlannedDocument& document) const {
    if (auto name = writtenEarlier(document, *result.text)) {
        result.textName = std::move(name);
        result.text.reset();
        return result;
    }
    const IfExists ifExists = arguments_.ifExists;
    const bool replaces = ifExists == IfExists::overwrite || ifExists == IfExists::newer;
    auto text = folder_->write(*document.textName, *result.text, replaces ? Present::replaced : Present::kept);
    result.text.reset();
    if (const auto* const failure = std::get_if<OutputFailure>(&text))
        return named(document, std::move(result), *failure);
    result.textName = document.textName;
    result.unnamed = std::move(std::get<std::shared_ptr<UnnamedText>>(text));
    return result;
}

Result Converter::named(const PlannedDocument& document, Result result,
                        const std::optional<OutputFailure>& failure) const {
    if (!failure) return result;
    result.textName.reset();
    // Another program created the file while the document was read: skip applies to it too.
    if (failure->nameIsInUse && arguments_.ifExists == IfExists::skip)
        return withoutText(std::move(result), Reason::skipped, *document.textName + " already exists");
    return withoutText(std::move(result), Reason::unwritable, *document.textName + ": " + failure->detail);
}

Result Converter::convertUnguarded(const PlannedDocument& document) {
    if (document.failure) return withoutText(document.failure->reason, document.failure->detail);
    if (folder_ != nullptr)
        if (auto decided = decidedByExistingText(document)) return std::move(*decided);
    Result result = readAndExtract(document);
    if (folder_ == nullptr || !result.text) return result;
    return written(std::move(result), document);
}

Result Converter::convert(const PlannedDocument& document) {
    const auto begin = std::chrono::steady_clock::now();
    Result result;
    try {
        result = convertUnguarded(document);
    } catch (const std::bad_alloc&) {
        result = withoutText(Reason::outOfMemory, {});
    }
    result.milliseconds = millisecondsSince(begin);
    return result;
}

} // namespace quillow::cli
