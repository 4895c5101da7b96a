// Counts the results of a run and writes the message about each document.
#pragma once

#include "cli/Arguments.h"
#include "cli/Plan.h"
#include "cli/Result.h"

#include <cstddef>
#include <string>

namespace quillow::cli {

class Report {
public:
    explicit Report(const Arguments& arguments)
        : arguments_(arguments) {}

    /// Counts the result. Returns the message line about it; empty if there is nothing to say.
    [[nodiscard]] std::string add(const PlannedDocument& document, const Result& result);

    [[nodiscard]] int exitCode() const;

private:
    [[nodiscard]] bool isFailure(const Result& result) const;
    [[nodiscard]] bool isTold(const Result& result) const;

    const Arguments& arguments_;
    std::size_t documents_ = 0;
    std::size_t failures_ = 0;
    std::size_t notAccepted_ = 0;
    bool isUnwritable_ = false;
};

} // namespace quillow::cli
