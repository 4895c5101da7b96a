#include "engines/pdf/layout/TaggedTable.h"

#include "engines/pdf/layout/LineWords.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <map>
#include <utility>

namespace quillow::pdf {

namespace {

/// A cell with more lines holds a page's text: some producers lay pages out with tables.
constexpr std::size_t kMostLines = 12;
/// Boxes may overlap by so much and still be apart: letters reach beyond their boxes. In points.
constexpr float kTouch = 1.0F;

/// The part of a line that is in one cell.
struct Part {
    CellMark cell;
    float left = 0;
    float right = 0;
};

bool isSameCell(const CellMark& a, const CellMark& b) {
    return a.table == b.table && a.row == b.row && a.column == b.column;
}

using Place = std::pair<std::uint32_t, std::uint32_t>; ///< a row and a column

/// Lines of one table of the tree.
struct Candidate {
    std::vector<std::uint32_t> lines;
    std::map<Place, Row> cells; ///< each as a row of one cell
    bool isTrusted = true;
};

class TaggedTables {
public:
    TaggedTables(const Page& page, Orientation& orientation, Lines& found, const std::vector<bool>& isTaken)
        : page_(page)
        , orientation_(orientation)
        , found_(found)
        , isTaken_(isTaken)
        , parts_(isTaken.size()) {}

    std::vector<Table> find() && {
        for (std::uint32_t i = 0; i < parts_.size(); ++i)
            if (!isTaken_[i]) addLine(i);
        std::vector<Table> tables;
        for (const auto& [table, candidate] : candidates_)
            if (candidate.isTrusted && isTable(candidate) && !hasOtherLines(candidate))
                tables.push_back(make(candidate));
        return tables;
    }

private:
    void addLine(std::uint32_t index) {
        std::vector<Part>& parts = parts_[index];
        const Line& line = found_.lines[index];
        for (const std::uint32_t span : found_.spansOf(line))
            addSpan(orientation_.spans[span], parts);
        std::sort(parts.begin(), parts.end(), [](const Part& a, const Part& b) { return a.left < b.left; });
        std::size_t kept = 0;
        bool isTrusted = true;
        for (const Part& part : parts) {
            if (kept > 0 && isSameCell(parts[kept - 1].cell, part.cell)) {
                parts[kept - 1].right = std::max(parts[kept - 1].right, part.right);
                continue;
            }
            isTrusted = isTrusted && (kept == 0 || (parts[kept - 1].cell.table == part.cell.table &&
                                                    part.left > parts[kept - 1].right - kTouch));
            parts[kept++] = part;
        }
        parts.resize(kept);
        for (const Part& part : parts) {
            if (part.cell.table == CellMark::kNoTable) continue;
            Candidate& candidate = candidates_[part.cell.table];
            candidate.isTrusted = candidate.isTrusted && isTrusted;
            if (candidate.lines.empty() || candidate.lines.back() != index) candidate.lines.push_back(index);
            Line box = line;
            box.left = part.left;
            box.right = part.right;
            const auto [cell, isNew] =
                candidate.cells.try_emplace({part.cell.row, part.cell.column}, rowOf(box, index));
            Row& row = cell->second;
            if (isNew) {
                row.cells.emplace_back(index);
                continue;
            }
            row.cells.front().push_back(index);
            row.left = std::min(row.left, box.left);
            row.right = std::max(row.right, box.right);
            row.bottom = std::min(row.bottom, box.bottom);
            row.top = std::max(row.top, box.top);
        }
    }

    void addSpan(const Span& span, std::vector<Part>& parts) const {
        const auto isBlank = [this](const Glyph& glyph) {
            const std::u32string_view text = page_.textOf(glyph);
            return std::all_of(text.begin(), text.end(), [](char32_t c) { return c == U' ' || c == U'\u00A0'; });
        };
        const auto first = page_.glyphs.begin() + span.firstGlyph;
        if (std::all_of(first, first + span.glyphCount, isBlank)) return;
        const std::int32_t mark = page_.runs[span.run].markedContent;
        const bool isMarked = mark >= 0 && static_cast<std::size_t>(mark) < page_.cells.size();
        const CellMark cell = isMarked ? page_.cells[static_cast<std::size_t>(mark)] : CellMark{};
        if (!parts.empty() && isSameCell(parts.back().cell, cell) && span.left >= parts.back().left)
            parts.back().right = std::max(parts.back().right, span.right);
        else
            parts.push_back({cell, span.left, span.right});
    }

    /// Whether the page shows several rows and columns where the tree has them.
    [[nodiscard]] static bool isTable(const Candidate& candidate) {
        std::size_t multiples = 0;
        std::size_t cellsOfRow = 0;
        int direction = 0; // of the columns of all rows
        float above = std::numeric_limits<float>::max();
        for (auto at = candidate.cells.begin(); at != candidate.cells.end(); ++at) {
            const auto& [place, cell] = *at;
            if (cell.cells.front().size() > kMostLines) return false;
            const auto before = at == candidate.cells.begin() ? at : std::prev(at);
            const bool isFirst = before == at || before->first.first != place.first;
            if (isFirst) {
                cellsOfRow = 1;
                if (cell.bottom > above) return false;
                above = cell.top;
                continue;
            }
            above = std::max(above, cell.top);
            if (++cellsOfRow == 2) ++multiples;
            const bool isToTheRight = cell.left > before->second.right - kTouch;
            const bool isToTheLeft = cell.right < before->second.left + kTouch;
            if (!isToTheRight && !isToTheLeft) return false;
            const int step = isToTheRight ? 1 : -1;
            if (direction == -step) return false;
            direction = step;
        }
        return multiples >= 2;
    }

    /// Whether there is text between the cells that is in none.
    [[nodiscard]] bool hasOtherLines(const Candidate& candidate) const {
        Row box = candidate.cells.begin()->second;
        for (const auto& [place, cell] : candidate.cells) {
            box.left = std::min(box.left, cell.left);
            box.right = std::max(box.right, cell.right);
            box.bottom = std::min(box.bottom, cell.bottom);
            box.top = std::max(box.top, cell.top);
        }
        auto member = candidate.lines.begin();
        for (std::uint32_t i = 0; i < parts_.size(); ++i) {
            if (member != candidate.lines.end() && *member == i) {
                ++member;
                continue;
            }
            const Line& line = found_.lines[i];
            const float x = (line.left + line.right) / 2;
            const float y = (line.bottom + line.top) / 2;
            if (x > box.left && x < box.right && y > box.bottom && y < box.top) return true;
        }
        return false;
    }

    [[nodiscard]] Table make(const Candidate& candidate) {
        Table table;
        table.lines = candidate.lines;
        std::map<Place, Cell> cells;
        for (const std::uint32_t index : candidate.lines)
            cut(index, cells);
        const std::uint32_t columns = lastColumn(cells) + 1;
        const bool isFromTheRight = isReversed(candidate);
        std::uint32_t lastRow = 0;
        for (auto& [place, lines] : cells) {
            const auto [row, column] = place;
            if (table.rows.empty() || row != lastRow) {
                table.rows.push_back(rowOf(found_.lines[lines.front()], lines.front()));
                table.rows.back().cells.assign(columns, {});
                table.rows.back().isTableRow = true;
                lastRow = row;
            }
            Row& written = table.rows.back();
            for (const std::uint32_t line : lines)
                extend(written, found_.lines[line]);
            written.cells[isFromTheRight ? columns - 1 - column : column] = std::move(lines);
        }
        const Row& first = candidate.cells.begin()->second;
        table.left = first.left;
        table.right = first.right;
        table.bottom = first.bottom;
        table.top = first.top;
        for (const auto& [place, cell] : candidate.cells) {
            table.left = std::min(table.left, cell.left);
            table.right = std::max(table.right, cell.right);
            table.bottom = std::min(table.bottom, cell.bottom);
            table.top = std::max(table.top, cell.top);
        }
        return table;
    }

    /// Puts the parts of a line into their cells.
    void cut(std::uint32_t index, std::map<Place, Cell>& cells) {
        const std::vector<Part>& parts = parts_[index];
        const auto placeOf = [](const Part& part) { return Place{part.cell.row, part.cell.column}; };
        if (parts.size() == 1) {
            cells[placeOf(parts.front())].push_back(index);
            return;
        }
        std::vector<float> cuts;
        for (std::size_t i = 1; i < parts.size(); ++i)
            cuts.push_back((parts[i - 1].right + parts[i].left) / 2);
        for (Line& line : cutLine(page_, orientation_, found_, index, cuts)) {
            const auto at = static_cast<std::size_t>(
                std::upper_bound(cuts.begin(), cuts.end(), (line.left + line.right) / 2) - cuts.begin());
            cells[placeOf(parts[at])].push_back(static_cast<std::uint32_t>(found_.lines.size()));
            found_.lines.push_back(line);
        }
    }

    [[nodiscard]] static std::uint32_t lastColumn(const std::map<Place, Cell>& cells) {
        std::uint32_t last = 0;
        for (const auto& [place, lines] : cells)
            last = std::max(last, place.second);
        return last;
    }

    /// Whether the first cells of rows are at the right.
    [[nodiscard]] static bool isReversed(const Candidate& candidate) {
        for (auto at = std::next(candidate.cells.begin()); at != candidate.cells.end(); ++at) {
            const auto before = std::prev(at);
            if (before->first.first == at->first.first) return at->second.left < before->second.left;
        }
        return false;
    }

    const Page& page_;
    Orientation& orientation_;
    Lines& found_;
    const std::vector<bool>& isTaken_;     ///< lines of other tables
    std::vector<std::vector<Part>> parts_; ///< of each line
    std::map<std::uint32_t, Candidate> candidates_;
};

} // namespace

std::vector<Table> taggedTablesOf(const Page& page, Orientation& orientation, Lines& found,
                                  const std::vector<bool>& isTaken) {
    if (page.cells.empty()) return {};
    return TaggedTables(page, orientation, found, isTaken).find();
}

} // namespace quillow::pdf
