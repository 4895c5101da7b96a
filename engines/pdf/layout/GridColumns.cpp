#include "engines/pdf/layout/GridColumns.h"

#include "engines/pdf/layout/Stripes.h"

#include <algorithm>
#include <cstddef>

namespace quillow::pdf {

namespace {

/// A stripe between columns is at least so wide. In ems.
constexpr float kLeastStripe = 0.2F;
/// Headings over several columns cross a stripe in so few of the heights.
constexpr float kCrossingShare = 0.2F;
/// So many of the rows or of the heights with text in a column, and at least so many, have text on both sides of its
/// stripes: lists of names with wrapped values in the rows, numbers at the heights.
constexpr float kBothShare = 0.6F;
constexpr std::size_t kLeastBoth = 3;
/// If more of what is to the left of a stripe are labels of a list, the text beside them is no column.
constexpr float kLabelShare = 0.7F;
constexpr std::uint32_t kLongestLabel = 3;
/// More columns than a column has.
constexpr std::size_t kMostStripes = 32;
/// More rulings than a table lacks: each is compared with each row.
constexpr std::size_t kMostRulings = 4000;
/// Text reaches over a ruling by less. In points.
constexpr float kSlack = 2;
constexpr float kSameBand = 0.5F;

struct Piece {
    Word word;
    std::size_t row = 0;
    std::size_t band = 0; ///< counted from above
};

/// The pieces of lines in the cells that are only in one column, and how they are arranged.
struct Column {
    std::vector<Piece> pieces;
    float size = 0;
};

/// A bullet, or a number with a sign behind it.
bool isListLabel(const Word& word) {
    const std::uint32_t signs = word.characters - word.digits - word.letters;
    return word.characters == 1 ? signs == 1 : word.characters <= kLongestLabel && signs == 1;
}

/// Rows, or heights, with text in a column, and those that have some on both sides of a stripe.
class Sides {
public:
    void add(std::size_t place, bool isLeft) {
        if (all_ == 0 || place != last_) {
            ++all_;
            sides_ = 0;
        }
        last_ = place;
        const int before = sides_;
        sides_ |= isLeft ? 1 : 2;
        if (before != 3 && sides_ == 3) ++both_;
    }
    [[nodiscard]] bool showColumns() const {
        return both_ >= kLeastBoth && static_cast<float>(both_) >= kBothShare * static_cast<float>(all_);
    }

private:
    std::size_t all_ = 0;
    std::size_t both_ = 0;
    std::size_t last_ = 0;
    int sides_ = 0;
};

/// Adds a ruling for each stripe to the rows that respect it.
void addRulings(const Grid& grid, std::size_t index, const Column& column, std::vector<Ruling>& rulings) {
    std::vector<Edge> edges;
    std::size_t bands = 0;
    for (std::size_t i = 0; i < column.pieces.size(); ++i) {
        const Piece& piece = column.pieces[i];
        edges.emplace_back(piece.word.left, 1);
        edges.emplace_back(piece.word.right, -1);
        bands += i == 0 || column.pieces[i - 1].band != piece.band ? 1 : 0;
    }
    if (bands < kLeastBoth) return;
    std::sort(edges.begin(), edges.end());
    std::vector<Stripe> stripes =
        freeStripes(edges, kCrossingShare * static_cast<float>(bands), kLeastStripe * column.size);
    if (stripes.size() > kMostStripes) return;
    for (const Stripe& stripe : stripes) {
        std::vector<bool> isCrossed(grid.rows());
        Sides rows;
        Sides heights;
        std::size_t lefts = 0;
        std::size_t labels = 0;
        for (const Piece& piece : column.pieces) {
            if (piece.word.left < stripe.left && piece.word.right > stripe.right) {
                isCrossed[piece.row] = true;
                continue;
            }
            const bool isLeft = (piece.word.left + piece.word.right) / 2 < stripe.middle();
            lefts += isLeft ? 1 : 0;
            labels += isLeft && isListLabel(piece.word) ? 1 : 0;
            rows.add(piece.row, isLeft);
            heights.add(piece.band, isLeft);
        }
        if (!rows.showColumns() && !heights.showColumns()) continue;
        if (static_cast<float>(labels) > kLabelShare * static_cast<float>(lefts)) continue; // a list in a cell
        for (std::size_t row = 0; row < grid.rows(); ++row)
            if (!isCrossed[row] && grid.onlyColumnOf(row, index) != Grid::kOutside)
                rulings.push_back({stripe.middle(), grid.bottomOf(row), grid.topOf(row)});
    }
}

/// The rulings of the other rows go on through a row where no ruling separates the columns, if its text respects them.
void continueRulings(const Grid& grid, std::size_t row, std::span<const Piece> pieces, std::vector<Ruling>& rulings) {
    std::size_t used = 0;
    std::size_t last = grid.columns();
    for (const Piece& piece : pieces) {
        const std::size_t first = grid.columnAt(piece.word.left + kSlack);
        const std::size_t end = grid.columnAt(piece.word.right - kSlack);
        if (first != end) return;
        if (first != last) ++used;
        last = first;
    }
    if (used < kLeastBoth) return;
    for (std::size_t column = 1; column < grid.columns(); ++column)
        if (grid.isOpen(row, column)) rulings.push_back({grid.leftOf(column), grid.bottomOf(row), grid.topOf(row)});
}

} // namespace

Grid withFreeColumns(const Grid& grid, std::span<const std::uint32_t> inside, LineWords& words,
                     const std::vector<Line>& lines) {
    std::vector<std::uint32_t> fromAbove(inside.begin(), inside.end());
    std::stable_sort(fromAbove.begin(), fromAbove.end(),
                     [&lines](std::uint32_t a, std::uint32_t b) { return lines[a].baseline > lines[b].baseline; });
    std::vector<Column> columns(grid.columns());
    std::vector<std::vector<Piece>> wide(grid.rows()); // in cells over several columns
    std::vector<Word> pieces;
    std::size_t band = 0;
    for (std::size_t i = 0; i < fromAbove.size(); ++i) {
        const Line& line = lines[fromAbove[i]];
        if (i > 0 && verticalOverlap(lines[fromAbove[i - 1]], line) < kSameBand) ++band;
        const std::size_t row = grid.rowAt((line.bottom + line.top) / 2);
        pieces.clear();
        words.appendPieces(fromAbove[i], pieces);
        for (const Word& piece : pieces) {
            const std::uint32_t column = grid.columnAt((piece.left + piece.right) / 2);
            if (row >= grid.rows()) continue;
            if (grid.onlyColumnOf(row, column) == Grid::kOutside) {
                wide[row].push_back({piece, row, band});
                continue;
            }
            columns[column].pieces.push_back({piece, row, band});
            columns[column].size = std::max(columns[column].size, line.size);
        }
    }
    std::vector<Ruling> rulings;
    for (std::size_t i = 0; i < columns.size(); ++i)
        addRulings(grid, i, columns[i], rulings);
    for (std::size_t row = 0; row < grid.rows(); ++row)
        continueRulings(grid, row, wide[row], rulings);
    return rulings.empty() || rulings.size() > kMostRulings ? grid : grid.with(rulings);
}

} // namespace quillow::pdf
