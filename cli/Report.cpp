#include "cli/Report.h"

#include "cli/Messages.h"
#include "cli/Program.h"

namespace quillow::cli {

namespace {

std::string detailOf(const PlannedDocument& document, const Result& result) {
    if (!result.detail.empty() || !hasText(result.reason)) return result.detail;
    std::string detail = std::to_string(result.textBytes) + " bytes";
    if (result.pages > 0) detail += ", " + std::to_string(result.pages) + (result.pages == 1 ? " page" : " pages");
    const auto& name = result.textName ? result.textName : document.textName;
    if (name) detail += ", " + *name;
    return detail;
}

} // namespace

bool isFailure(Reason reason, PartialCountsAs partial) {
    if (reason == Reason::partial) return partial == PartialCountsAs::failed;
    return !hasText(reason) && reason != Reason::skipped;
}

std::string Report::add(const PlannedDocument& document, const Result& result) {
    count(result.reason, result.acceptance);
    return isTold(result) ? resultLine(document.path, result.reason, detailOf(document, result)) : std::string();
}

void Report::add(const FinishedDocument& document) {
    count(document.reason, document.acceptance);
}

void Report::count(Reason reason, Acceptance acceptance) {
    ++documents_;
    if (isFailure(reason, arguments_.partial)) ++failures_;
    if (acceptance == Acceptance::notAccepted) ++notAccepted_;
    if (reason == Reason::unwritable) isUnwritable_ = true;
}

int Report::exitCode() const {
    if (isUnwritable_) return kDestinationUnwritable;
    if (documents_ > 0 && notAccepted_ == documents_) return kNothingAccepted; // a shard may have no document
    return failures_ > 0 ? kSomeFailed : kAllConverted;
}

bool Report::isTold(const Result& result) const {
    if (arguments_.verbosity == Verbosity::quiet) return false;
    return isFailure(result.reason, arguments_.partial) || result.reason == Reason::partial ||
           arguments_.verbosity == Verbosity::verbose;
}

} // namespace quillow::cli
