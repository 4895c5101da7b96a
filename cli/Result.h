// What became of one document.
#pragma once

#include "engines/Extraction.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quillow::cli {

/// Whether the input is of a kind that the program takes at all, by its name or, where that tells nothing, its content.
enum class Acceptance { accepted, notAccepted };

struct Result {
    Reason reason = Reason::damaged;
    std::string detail;
    std::optional<std::string> text; ///< present while it waits to be written to standard output
    std::uint64_t textBytes = 0;
    std::uint64_t pages = 0;
    Acceptance acceptance = Acceptance::accepted;
};

/// A document whose text came, if only in part or if there was none to come.
[[nodiscard]] constexpr bool hasText(Reason reason) {
    return reason == Reason::ok || reason == Reason::okEmpty || reason == Reason::partial;
}

} // namespace quillow::cli
