// What became of one page: a value that is made page by page, in any order, and consumed in the order of the pages.
#pragma once

#include "engines/Extraction.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// What is known of a row where lines are joined.
enum OutcomeRowFlag : std::uint16_t {
    kTableRow = 1,
    kContinuesTable = 2,
    kBeginsParagraph = 4,
    kBeginsLine = 8, ///< the line end before it is meant
    kMonospaced = 16,
    kBelow = 32,          ///< it is below the row before it, in the same column
    kEndsSentence = 64,   ///< its text ends as a sentence does
    kBeginsSmall = 128,   ///< its text begins with a small letter
    kListItem = 256,      ///< its text begins with the sign of a list
    kSoftHyphen = 512,    ///< it ends with a hyphen that is in no word
    kBeginsSolid = 1024,  ///< it begins with a letter of a script without blanks
    kEndsSolid = 2048,    ///< it ends with one
    kMainText = 4096,     ///< it is in the page's main direction
    kFirstIndented = 8192 ///< it is the first of a column, and begins behind the line below it
};

/// One line of a page's text, with what joining lines needs of its place. In points.
struct OutcomeRow {
    std::uint32_t begin = 0; ///< offset in PageOutcome::text
    std::uint32_t end = 0;   ///< without the line end
    float baseline = 0;
    float size = 0;
    float room = 0; ///< how far it ends before the margin of its column
    std::uint16_t flags = 0;

    [[nodiscard]] bool is(OutcomeRowFlag flag) const { return (flags & flag) != 0; }
};

struct PageOutcome {
    std::string text; ///< in UTF-8; ends with a line end, or is empty
    LossAccount loss;
    std::vector<OutcomeRow> rows; ///< in reading order, if lines are to be joined

    [[nodiscard]] std::string_view textOf(const OutcomeRow& row) const {
        return std::string_view(text).substr(row.begin, row.end - row.begin);
    }
};

} // namespace quillow::pdf
