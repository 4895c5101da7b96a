#include "cli/Conversion.h"

#include "cli/Input.h"
#include "engines/ContentSniffer.h"

#include <sys/stat.h>

#include <algorithm>
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

double milliseconds(std::chrono::steady_clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

} // namespace

worker::Question Converter::questionFor(DocumentKind kind, const PlannedDocument& document) const {
    worker::Question question{kind, arguments_.options, arguments_.explainedPage.value_or(0)};
    question.options.threads = document.threads;
    return question;
}

/// The extraction; where a password is needed and may be asked for, a second one with it.
Extraction Converter::extractAsking(const PlannedDocument& document, Begun& begun, ReadingQueue& queue) {
    Extraction extraction = queue.take();
    if (extraction.reason != Reason::locked || arguments_.askForPassword == AskForPassword::never) return extraction;
    worker::Question question = questionFor(*begun.given, document);
    question.options.password = prompt_.password();
    return question.options.password.empty() ? extraction : reader_.read(begun.input.bytes, question);
}

Result Converter::extracted(const PlannedDocument& document, Begun& begun, ReadingQueue& queue) {
    Extraction extraction = extractAsking(document, begun, queue);
    if (begun.input.bytes.haveChanged()) return withoutText(Reason::unreadable, "it was changed while it was read");
    Result result = std::move(begun.result);
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

bool Converter::mayBeginEarly(const PlannedDocument& document) const {
    if (arguments_.readIn != ReadIn::workers || document.path == kStandardStream) return false;
    struct stat status = {};
    return ::stat(document.path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           static_cast<std::size_t>(status.st_size) < kMappedForWorkersFrom;
}

void Converter::give(const PlannedDocument& document, Begun& begun, ReadingQueue& queue) {
    const auto decide = [&begun](Result result) { begun.result = std::move(result); };
    if (document.failure) return decide(withoutText(document.failure->reason, document.failure->detail));
    if (folder_ != nullptr)
        if (auto decided = decidedByExistingText(document)) return decide(std::move(*decided));
    const Reading reading = document.kind ? Reading::whole : Reading::recognised;
    InputOutcome read = document.path == kStandardStream ? readStandardInput(reading)
                                                         : readInput(document.path, reading, arguments_.readIn);
    if (auto* const failure = std::get_if<InputFailure>(&read))
        return decide(withoutText(failure->reason, std::move(failure->detail)));
    InputDocument& input = begun.input = std::move(std::get<InputDocument>(read));
    std::optional<DocumentKind> kind = input.kind == InputKind::bundle ? DocumentKind::rtfd : document.kind;
    if (!kind) kind = sniffDocumentKind(input.bytes.view());
    if (!kind && input.bytes.view().empty()) return decide(withoutText(Reason::damaged, "the input is empty"));
    if (!kind) return decide(notAccepted(input.bytes.view()));
    // The reader may release the bytes.
    if (sha256_) begun.result.documentHash = sha256_->hexOf(input.bytes.view());
    queue.give(input.bytes, questionFor(*kind, document));
    begun.given = kind;
}

void Converter::begin(const PlannedDocument& document, Begun& begun, ReadingQueue& queue) {
    const auto begin = std::chrono::steady_clock::now();
    try {
        give(document, begun, queue);
    } catch (const std::bad_alloc&) {
        begun.result = withoutText(Reason::outOfMemory, {});
    }
    begun.time = std::chrono::steady_clock::now() - begin;
}

Result Converter::end(const PlannedDocument& document, Begun& begun, ReadingQueue& queue) {
    const auto begin = std::chrono::steady_clock::now();
    Result result;
    try {
        result = begun.given ? extracted(document, begun, queue) : std::move(begun.result);
        if (folder_ != nullptr && result.text) result = written(std::move(result), document);
    } catch (const std::bad_alloc&) {
        result = withoutText(Reason::outOfMemory, {});
    }
    result.milliseconds = milliseconds(begun.time + (std::chrono::steady_clock::now() - begin));
    return result;
}

ConversionJob::ConversionJob(Converter& converter, const Plan& plan, DocumentReader& reader)
    : converter_(converter)
    , plan_(plan)
    , queue_(reader) {}

void ConversionJob::begin(std::size_t index) {
    converter_.begin(plan_.documents[index], begun_.emplace_back(), queue_);
}

Result ConversionJob::end(std::size_t index) {
    Result result = converter_.end(plan_.documents[index], begun_.front(), queue_);
    begun_.pop_front();
    return result;
}

} // namespace quillow::cli
