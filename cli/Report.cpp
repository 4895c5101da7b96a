#include "cli/Report.h"

#include "cli/Messages.h"
#include "cli/Program.h"

namespace quillow::cli {

namespace {

std::string detailOf(const PlannedDocument& document, const Result& result) {
    if (!result.detail.empty() || !hasText(result.reason)) return result.detail;
    std::string detail = std::to_string(result.textBytes) + " bytes";
    if (result.pages > 0) detail += ", " + std::to_string(result.pages) + (result.pages == 1 ? " page" : " pages");
    if (document.textName) detail += ", " + *document.textName;
    return detail;
}

} // namespace

std::string Report::add(const PlannedDocument& document, const Result& result) {
    ++documents_;
    if (isFailure(result)) ++failures_;
    if (result.acceptance == Acceptance::notAccepted) ++notAccepted_;
    if (result.reason == Reason::unwritable) isUnwritable_ = true;
    return isTold(result) ? resultLine(document.path, result.reason, detailOf(document, result)) : std::string();
}

int Report::exitCode() const {
    if (isUnwritable_) return kDestinationUnwritable;
    if (notAccepted_ == documents_) return kNothingAccepted;
    return failures_ > 0 ? kSomeFailed : kAllConverted;
}

bool Report::isFailure(const Result& result) const {
    if (result.reason == Reason::partial) return arguments_.partial == PartialCountsAs::failed;
    return !hasText(result.reason) && result.reason != Reason::skipped;
}

bool Report::isTold(const Result& result) const {
    if (arguments_.verbosity == Verbosity::quiet) return false;
    return isFailure(result) || result.reason == Reason::partial || arguments_.verbosity == Verbosity::verbose;
}

} // namespace quillow::cli
