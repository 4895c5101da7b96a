#include "engines/pdf/layout/GridTable.h"

#include "engines/pdf/layout/GridColumns.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace quillow::pdf {

namespace {

/// Fewer of the cells with text: a drawing with labels, or a form to fill in.
constexpr float kFilledShare = 0.3F;
/// A cell with more lines holds a page's text, not a table's.
constexpr std::size_t kMostLines = 24;
/// Lines side by side in one cell, in so many of the rows: there are columns that no ruling separates.
constexpr float kSubColumnShare = 0.1F;
constexpr float kSameBand = 0.6F;
constexpr float kInterleaved = 0.2F;
/// Bands between two rulings are rows of their own if there are so many, most have several cells, and many of these are
/// numbers: the cells of one row with several lines are words, and not all of them are equally long.
constexpr std::size_t kLeastBands = 3;
constexpr float kMultipleShare = 0.7F;
constexpr float kNumericShare = 0.33F;

/// Words of a line in one cell.
struct Part {
    std::uint32_t cell = 0;
    std::uint32_t row = 0; ///< the grid row that it is in, even if its cell began in a row above
    float left = 0;
    float right = 0;
    bool isNumeric = false; ///< its first word is
};

class GridTable {
public:
    GridTable(const Grid& grid, std::span<const std::uint32_t> inside, LineWords& words, const std::vector<Line>& lines,
              Evidence* evidence)
        : grid_(grid)
        , evidence_(evidence)
        , inside_(inside)
        , words_(words) {
        for (const std::uint32_t line : inside)
            addParts(line, lines[line]);
        findBandsThatAreRows(lines);
    }

    [[nodiscard]] bool isTable(const std::vector<Line>& lines) const {
        std::map<std::uint32_t, std::vector<std::uint32_t>> cells;
        for (std::size_t i = 0; i < inside_.size(); ++i)
            for (const Part& part : parts_[i])
                cells[part.cell].push_back(inside_[i]);
        std::map<std::size_t, std::size_t> rows;
        std::map<std::size_t, std::size_t> columns;
        std::size_t subColumns = 0;
        for (auto& [cell, members] : cells) {
            const bool holdsRows = rowsOfBands_.contains(cell / grid_.columns());
            if (cell == Grid::kOutside || (!holdsRows && members.size() > kMostLines))
                return judge(
                    false, "a ruled table: a cell holds a page's text",
                    {{"lines", static_cast<float>(members.size())}, {"kMostLines", static_cast<float>(kMostLines)}});
            ++rows[cell / grid_.columns()];
            ++columns[cell % grid_.columns()];
            std::stable_sort(members.begin(), members.end(),
                             [&](std::uint32_t a, std::uint32_t b) { return lines[a].baseline > lines[b].baseline; });
            for (std::size_t i = 1; i < members.size(); ++i)
                if (verticalOverlap(lines[members[i - 1]], lines[members[i]]) > kSameBand) {
                    ++subColumns;
                    break;
                }
        }
        const auto isMultiple = [](const auto& row) { return row.second > 1; };
        const auto multipleRows = std::count_if(rows.begin(), rows.end(), isMultiple);
        const auto multipleColumns = std::count_if(columns.begin(), columns.end(), isMultiple);
        if ((multipleRows < 2 || multipleColumns < 2) && rowsOfBands_.empty())
            return judge(
                false, "a ruled table: too few rows and columns have several cells",
                {{"rows", static_cast<float>(multipleRows)}, {"columns", static_cast<float>(multipleColumns)}});
        const auto cellCount = static_cast<float>(cells.size());
        if (static_cast<float>(subColumns) > kSubColumnShare * cellCount)
            return judge(
                false, "a ruled table: lines are side by side in many cells",
                {{"share of cells", static_cast<float>(subColumns) / cellCount}, {"kSubColumnShare", kSubColumnShare}});
        return judge(cellCount >= kFilledShare * static_cast<float>(grid_.cellCount()), "a ruled table",
                     {{"filled cells", cellCount},
                      {"of", static_cast<float>(grid_.cellCount())},
                      {"kFilledShare", kFilledShare}});
    }

    [[nodiscard]] Table make(const Page& page, Orientation& orientation, Lines& found) const {
        std::vector<Line>& lines = found.lines;
        Table table;
        table.left = grid_.left();
        table.right = grid_.right();
        table.top = grid_.top();
        table.bottom = grid_.bottom();
        table.lines.assign(inside_.begin(), inside_.end());
        // A place is a row of the grid, a band in it if bands are rows, and a column.
        using Place = std::tuple<std::size_t, std::size_t, std::size_t>;
        std::map<Place, Cell> cells;
        const std::set<std::uint32_t> open = openColumns();
        for (std::size_t i = 0; i < inside_.size(); ++i) {
            const std::vector<Part>& parts = parts_[i];
            const auto placeOf = [&](const Part& part) {
                const bool isOpen = open.contains(part.cell);
                return Place{isOpen ? part.row : part.cell / grid_.columns(), isOpen ? 0 : bands_[i],
                             part.cell % grid_.columns()};
            };
            if (parts.empty()) continue;
            if (parts.size() == 1) {
                cells[placeOf(parts.front())].push_back(inside_[i]);
                continue;
            }
            std::vector<float> cuts;
            for (std::size_t k = 1; k < parts.size(); ++k)
                cuts.push_back((parts[k - 1].right + parts[k].left) / 2);
            for (Line& part : cutLine(page, orientation, found, inside_[i], cuts)) {
                const auto at = static_cast<std::size_t>(
                    std::upper_bound(cuts.begin(), cuts.end(), (part.left + part.right) / 2) - cuts.begin());
                cells[placeOf(parts[at])].push_back(static_cast<std::uint32_t>(lines.size()));
                lines.push_back(std::move(part));
            }
        }
        std::pair<std::size_t, std::size_t> lastRow;
        for (auto& [place, members] : cells) {
            const auto [gridRow, band, column] = place;
            std::stable_sort(members.begin(), members.end(),
                             [&](std::uint32_t a, std::uint32_t b) { return lines[a].baseline > lines[b].baseline; });
            if (table.rows.empty() || std::pair(gridRow, band) != lastRow) {
                table.rows.push_back(rowOf(lines[members.front()], members.front()));
                table.rows.back().cells.assign(grid_.columns(), {});
                table.rows.back().isTableRow = true;
                lastRow = {gridRow, band};
            }
            orderBands(members, lines);
            Row& row = table.rows.back();
            for (const std::uint32_t line : members)
                extend(row, lines[line]);
            row.cells[column] = std::move(members);
        }
        dropCoveredColumns(table);
        return table;
    }

private:
    /// Lines side by side in one cell are read from left to right.
    static void orderBands(Cell& members, const std::vector<Line>& lines) {
        auto begin = members.begin();
        while (begin != members.end()) {
            auto end = begin + 1;
            while (end != members.end() && verticalOverlap(lines[*begin], lines[*end]) > kSameBand)
                ++end;
            std::stable_sort(begin, end,
                             [&](std::uint32_t a, std::uint32_t b) { return lines[a].left < lines[b].left; });
            begin = end;
        }
    }

    [[nodiscard]] bool judge(bool isAccepted, std::string_view reason, std::initializer_list<Fact> facts) const {
        const Box area{grid_.left(), grid_.bottom(), grid_.right(), grid_.top()};
        if (evidence_ != nullptr)
            evidence_->note(Topic::table, isAccepted ? Verdict::accepted : Verdict::refused, area, reason, facts);
        return isAccepted;
    }

    void addParts(std::uint32_t index, const Line& line) {
        std::vector<Part>& parts = parts_.emplace_back();
        const float middle = (line.bottom + line.top) / 2;
        for (const Word& word : words_.of(index)) {
            const std::uint32_t cell = grid_.cellAt((word.left + word.right) / 2, middle);
            if (parts.empty() || parts.back().cell != cell)
                parts.push_back({cell, grid_.rowAt(middle), word.left, word.right,
                                 word.isNumeric() && word.digits > 0}); // bullets are no numbers
            else
                parts.back().right = std::max(parts.back().right, word.right);
        }
    }

    /// Cells over many rows with lines in most of these: a column of labels without rulings of its own.
    [[nodiscard]] std::set<std::uint32_t> openColumns() const {
        std::map<std::uint32_t, std::set<std::uint32_t>> rows;
        std::map<std::uint32_t, std::size_t> lines;
        for (const std::vector<Part>& parts : parts_) {
            for (const Part& part : parts) {
                rows[part.cell].insert(part.row);
                ++lines[part.cell];
            }
        }
        std::set<std::uint32_t> open;
        for (const auto& [cell, used] : rows)
            if (used.size() >= kLeastBands && used.size() == lines[cell]) open.insert(cell);
        return open;
    }

    /// Finds the band of each line in its row of the grid, from above, where the bands are rows without rulings between
    /// them; else it is 0.
    void findBandsThatAreRows(const std::vector<Line>& lines) {
        std::vector<std::size_t>& result = bands_;
        result.resize(inside_.size());
        std::map<std::size_t, std::vector<std::size_t>> rows; // indices in inside_
        for (std::size_t i = 0; i < inside_.size(); ++i)
            if (!parts_[i].empty()) rows[parts_[i].front().cell / grid_.columns()].push_back(i);
        for (auto& [row, members] : rows) {
            std::stable_sort(members.begin(), members.end(), [&](std::size_t a, std::size_t b) {
                return lines[inside_[a]].baseline > lines[inside_[b]].baseline;
            });
            bool isCentred = false;
            std::size_t bands = 0;
            std::size_t multiples = 0;
            std::size_t cellsOfBand = 0;
            std::size_t cells = 0;
            std::size_t numeric = 0;
            for (std::size_t k = 0; k < members.size(); ++k) {
                const Line& line = lines[inside_[members[k]]];
                if (k == 0 || verticalOverlap(lines[inside_[members[k - 1]]], line) < kSameBand) {
                    // Lines of centred cells reach into one another; rows do not.
                    if (k > 0 && verticalOverlap(lines[inside_[members[k - 1]]], line) > kInterleaved) isCentred = true;
                    ++bands;
                    cellsOfBand = 0;
                }
                result[members[k]] = bands - 1;
                for (const Part& part : parts_[members[k]]) {
                    ++cells;
                    if (++cellsOfBand == 2) ++multiples;
                    numeric += part.isNumeric ? 1 : 0;
                }
            }
            const bool areRows = !isCentred && bands >= kLeastBands &&
                                 kMultipleShare * static_cast<float>(bands) <= static_cast<float>(multiples) &&
                                 kNumericShare * static_cast<float>(cells) <= static_cast<float>(numeric);
            if (areRows) {
                rowsOfBands_.insert(row);
                continue;
            }
            for (const std::size_t k : members)
                result[k] = 0;
        }
    }

    /// Columns that no row has a cell in: a doubled ruling, or a ruling of one heading.
    void dropCoveredColumns(Table& table) const {
        std::vector<bool> isUsed(grid_.columns());
        for (const Row& row : table.rows)
            for (std::size_t i = 0; i < row.cells.size(); ++i)
                if (!row.cells[i].empty()) isUsed[i] = true;
        for (Row& row : table.rows) {
            std::size_t kept = 0;
            for (std::size_t i = 0; i < row.cells.size(); ++i) {
                if (!isUsed[i]) continue;
                if (kept != i) row.cells[kept] = std::move(row.cells[i]);
                ++kept;
            }
            row.cells.resize(kept);
        }
    }

    const Grid& grid_;
    Evidence* evidence_;
    std::span<const std::uint32_t> inside_;
    LineWords& words_;
    std::vector<std::vector<Part>> parts_;
    std::vector<std::size_t> bands_;    ///< of each line
    std::set<std::size_t> rowsOfBands_; ///< the rows of the grid whose bands are rows
};

} // namespace

std::optional<Table> tableIn(const Grid& grid, std::span<const std::uint32_t> inside, const Page& page,
                             Orientation& orientation, LineWords& words, Lines& found, Evidence* evidence) {
    const Grid whole = withFreeColumns(grid, inside, words, found.lines);
    if (whole.columns() < 2) return std::nullopt;
    const GridTable table(whole, inside, words, found.lines, evidence);
    if (!table.isTable(found.lines)) return std::nullopt;
    return table.make(page, orientation, found);
}

} // namespace quillow::pdf
