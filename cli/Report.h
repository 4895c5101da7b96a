// Counts the results of a run and writes the message about each document.
#pragma once

#include "cli/Plan.h"
#include "cli/Result.h"
#include "cli/options/Arguments.h"

#include <cstddef>
#include <string>

namespace quillow::cli {

/// Whether the outcome makes the run fail.
[[nodiscard]] bool isFailure(Reason reason, PartialCountsAs partial);

class Report {
public:
    explicit Report(const Arguments& arguments)
        : arguments_(arguments) {}

    /// Counts the result. Returns the message line about it; empty if there is nothing to say.
    [[nodiscard]] std::string add(const PlannedDocument& document, const Result& result);

    /// Counts the result of an earlier run.
    void add(const FinishedDocument& document);

    [[nodiscard]] int exitCode() const;

private:
    void count(Reason reason, Acceptance acceptance);
    [[nodiscard]] bool isTold(const Result& result) const;

    const Arguments& arguments_;
    std::size_t documents_ = 0;
    std::size_t failures_ = 0;
    std::size_t notAccepted_ = 0;
    bool isUnwritable_ = false;
};

} // namespace quillow::cli
