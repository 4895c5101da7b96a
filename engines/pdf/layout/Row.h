// What is written as one line of text: a line of the page, several side by side, or a row of a table.
#pragma once

#include "engines/pdf/layout/Line.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// Lines, one below the other, that are written with blanks between them. Most cells have few lines; these need no
/// memory of their own.
class Cell {
public:
    Cell() = default;
    explicit Cell(std::uint32_t line) { push_back(line); }

    void push_back(std::uint32_t line) {
        if (size_ < few_.size()) {
            few_[size_] = line;
        } else {
            if (size_ == few_.size()) many_.assign(few_.begin(), few_.end());
            many_.push_back(line);
        }
        ++size_;
    }

    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] bool empty() const { return size_ == 0; }
    [[nodiscard]] std::uint32_t front() const { return *begin(); }
    [[nodiscard]] std::uint32_t operator[](std::size_t i) const { return begin()[i]; }
    [[nodiscard]] const std::uint32_t* begin() const { return size_ <= few_.size() ? few_.data() : many_.data(); }
    [[nodiscard]] const std::uint32_t* end() const { return begin() + size_; }
    [[nodiscard]] std::uint32_t* begin() { return size_ <= few_.size() ? few_.data() : many_.data(); }
    [[nodiscard]] std::uint32_t* end() { return begin() + size_; }

private:
    std::array<std::uint32_t, 3> few_{};
    std::uint32_t size_ = 0;
    std::vector<std::uint32_t> many_; ///< all of them, if they are not few
};

struct Row {
    std::uint32_t line = 0;  ///< the only one, if there are no cells: most rows are such
    std::vector<Cell> cells; ///< from left to right; those of a table may be empty
    float left = 0;
    float right = 0;
    float baseline = 0;
    float bottom = 0;
    float top = 0;
    float size = 0;
    bool isTableRow = false;     ///< TABs separate its cells, else blanks
    bool isFromTheRight = false; ///< of a table: the cells are read from the right
    bool continuesTable = false; ///< it is not the first row of its table

    std::u32string_view begin; ///< the text of its first line
    std::u32string_view end;   ///< the text of its last line
    std::uint32_t font = 0;    ///< with which it begins
    bool isOneFont = true;
    bool isMonospaced = false;
    bool endsInSoftHyphen = false;

    float room = 0;               ///< how far it ends before the margin of its column, in points
    float indent = 0;             ///< how far it begins behind the margin of its column, in points
    bool beginsParagraph = false; ///< the page shows a break before it
    bool beginsLine = false;      ///< the line end before it is meant: a further word had room there

    [[nodiscard]] float height() const { return top - bottom; }
    [[nodiscard]] float width() const { return right - left; }
};

/// A row of one line.
[[nodiscard]] Row rowOf(const Line& line, std::uint32_t index);

/// Calls `use` with the lines of each cell, from left to right.
template <class Use>
void forEachCell(const Row& row, Use use) {
    if (row.cells.empty()) use(std::span(&row.line, 1));
    for (const Cell& cell : row.cells)
        use(std::span(cell));
}

/// Makes a row large enough for a line.
void extend(Row& row, const Line& line);

} // namespace quillow::pdf
