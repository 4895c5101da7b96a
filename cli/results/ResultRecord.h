// What a results file says about one document: one JSON object on one line.
#pragma once

#include "engines/Extraction.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillow::cli {

/// The number of the format of the lines. Readers refuse lines with another number.
inline constexpr int kResultsSchema = 1;

struct ResultRecord {
    std::string path;                  ///< as the run named the document; any bytes but NUL
    std::optional<std::string> output; ///< the path of the text's file; std::nullopt: no file was written
    Reason status = Reason::damaged;
    std::string detail;
    LossAccount loss;
    std::uint64_t pages = 0;
    std::uint64_t characters = 0;            ///< code points of the text
    std::uint64_t textBytes = 0;             ///< of the text in UTF-8
    std::optional<std::string> documentHash; ///< SHA-256 of the document's bytes; std::nullopt: they were not read
    std::optional<std::string> textHash;     ///< SHA-256 of the text; std::nullopt: there is none
    double milliseconds = 0;                 ///< for reading the document and writing its text
    std::string engine;                      ///< the version of the program
};

/// The line, with its line end. Strings that are not UTF-8 have U+FFFD for their invalid bytes, and a second member,
/// NAME_b64, with their bytes in Base64 (RFC 4648, section 4).
[[nodiscard]] std::string lineOf(const ResultRecord& record);

/// Reads a line without its line end. std::nullopt if it is not a whole record of this schema. Members that are not
/// known are ignored.
[[nodiscard]] std::optional<ResultRecord> recordOf(std::string_view line);

} // namespace quillow::cli
