// Reads the lines of files of results.
#pragma once

#include "cli/results/ResultRecord.h"

#include <cstddef>
#include <functional>
#include <string>
#include <variant>

namespace quillow::cli {

struct ResultsFailure {
    std::string detail; ///< the system's error message, or a phrase such as "line 3 is not a result"
};

struct ResultLine {
    std::string text;    ///< without its line end
    bool isWhole = true; ///< it has its line end
};

/// How a file ends: a process that is killed in the middle of a write leaves a part of a line.
enum class LastLine { whole, cut };

/// Calls `each` with every result and its line, except a part of a line at the end. Fails at a line that is no result
/// of this program or is longer than `longest`.
[[nodiscard]] std::variant<LastLine, ResultsFailure>
readResults(const std::string& path, std::size_t longest,
            const std::function<void(ResultRecord, const ResultLine&)>& each);

} // namespace quillow::cli
