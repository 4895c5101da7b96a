// The result of converting one document.
#pragma once

#include "cli/UnnamedText.h"
#include "engines/Extraction.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace quillow::cli {

/// Whether the input is of a kind that the program reads, by its name or, if the name shows no kind, by its content.
enum class Acceptance { accepted, notAccepted };

struct Result {
    Reason reason = Reason::damaged;
    std::string detail;
    std::optional<std::string> text;      ///< present until it is written
    std::shared_ptr<UnnamedText> unnamed; ///< then this, until it has its name
    std::uint64_t textBytes = 0;
    std::uint64_t pages = 0;
    LossAccount loss;
    Acceptance acceptance = Acceptance::accepted;
    std::optional<std::string> textName; ///< where the text is, below the output folder; std::nullopt: not in a file
    // For results only:
    std::uint64_t characters = 0;            ///< code points of the text
    std::optional<std::string> documentHash; ///< SHA-256 in hexadecimal; std::nullopt: the document was not read
    std::optional<std::string> textHash;     ///< std::nullopt: there is no text
    double milliseconds = 0;
};

/// True if the document gave its text, even if the text is partial or empty.
[[nodiscard]] constexpr bool hasText(Reason reason) {
    return reason == Reason::ok || reason == Reason::okEmpty || reason == Reason::partial;
}

} // namespace quillow::cli
