#include "engines/pdf/layout/Table.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace quillow::pdf {

namespace {

/// Vertical extents with so much in common are one band.
constexpr float kSameBand = 0.5F;
/// Bands further apart are not of one table unless rulings connect them. In ems.
constexpr float kMostLeading = 2.0F;
/// A stripe between columns is at least so wide. In ems.
constexpr float kLeastStripe = 0.4F;
/// A cell that reaches over several columns, or a misaligned one, may cross a stripe in so few of the bands.
constexpr float kCrossingShare = 0.06F;
/// Longer cells are sentences. In characters.
constexpr std::size_t kProse = 32;
/// A column of labels of a list: bullets and numbers.
constexpr std::size_t kLongestLabel = 5;
/// Bands of one region: no page has more, and the search for stripes is quadratic in them.
constexpr std::size_t kMostBands = 400;
/// Bands of a single line between the rows of one table, at most.
constexpr std::size_t kMostSingles = 3;

/// Lines that the search for stripes may look at, again and again, on a page with so many lines. Pages need a tenth; on
/// one that needs more no further table is found.
constexpr std::size_t kMostWork = 1'000'000;
constexpr std::size_t kMostWorkALine = 32;

/// Lines at one height, from left to right.
struct Band {
    std::vector<std::uint32_t> lines;
    float bottom = 0;
    float top = 0;
    float size = 0;

    [[nodiscard]] float height() const { return top - bottom; }
    [[nodiscard]] bool isMultiple() const { return lines.size() > 1; }
};

struct Stripe {
    float left = 0;
    float right = 0;
};

bool isDigitLike(char32_t c) {
    return (c >= '0' && c <= '9') || (c >= 0x0660 && c <= 0x0669) || (c >= 0x06F0 && c <= 0x06F9);
}

bool isLetterLike(char32_t c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= 0xAA && c != 0xD7 && c != 0xF7 && c < 0x2000) ||
           c >= 0x2E80;
}

/// Numbers, amounts, percentages, dashes for missing values.
bool isNumeric(std::u32string_view text) {
    std::size_t digits = 0;
    std::size_t letters = 0;
    for (const char32_t c : text) {
        digits += isDigitLike(c) ? 1 : 0;
        letters += isLetterLike(c) ? 1 : 0;
    }
    return digits > letters || (letters == 0 && text.size() <= 3);
}

bool isListLabel(std::u32string_view text) {
    if (text.size() > kLongestLabel) return false;
    if (text.size() == 1) return !isDigitLike(text[0]) && !isLetterLike(text[0]) ? true : isLetterLike(text[0]);
    const char32_t last = text.back();
    return last == '.' || last == ')' || last == ':' || last == ']';
}

class TableFinder {
public:
    TableFinder(std::span<const Line> lines, std::span<const std::u32string_view> texts,
                std::span<const Ruling> rulings)
        : lines_(lines)
        , texts_(texts)
        , rulings_(rulings) {}

    std::vector<Table> find() && {
        makeBands();
        std::size_t i = 0;
        while (i < bands_.size() && work_ < kMostWork + kMostWorkALine * lines_.size()) {
            const std::size_t end = bands_[i].isMultiple() ? growRegion(i) : i;
            if (end > i + 1 && isTable(i, end)) {
                tables_.push_back(makeTable(i, end));
                i = end;
            } else {
                ++i;
            }
        }
        return std::move(tables_);
    }

private:
    void makeBands() {
        std::vector<std::uint32_t> order(lines_.size());
        for (std::uint32_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::stable_sort(order.begin(), order.end(),
                         [this](std::uint32_t a, std::uint32_t b) { return lines_[a].baseline > lines_[b].baseline; });
        for (const std::uint32_t index : order) {
            const Line& line = lines_[index];
            if (bands_.empty() || verticalOverlap(bands_.back(), line) < kSameBand) {
                Band band;
                band.bottom = line.bottom;
                band.top = line.top;
                band.size = line.size;
                bands_.push_back(std::move(band));
            }
            bands_.back().lines.push_back(index);
        }
        for (Band& band : bands_)
            std::stable_sort(band.lines.begin(), band.lines.end(),
                             [this](std::uint32_t a, std::uint32_t b) { return lines_[a].left < lines_[b].left; });
    }

    [[nodiscard]] float leadingBetween(const Band& above, const Band& below) const {
        const float size = std::max(above.size, below.size);
        return size > 0 ? (above.bottom - below.top) / size : 0;
    }

    /// The end of the bands that may be one table with the band at `begin`.
    std::size_t growRegion(std::size_t begin) {
        std::size_t end = begin + 1;
        std::size_t singles = 0;
        std::size_t columns = stripesOf(begin, end).size();
        for (std::size_t i = begin + 1; i < bands_.size() && i - begin < kMostBands; ++i) {
            if (leadingBetween(bands_[i - 1], bands_[i]) > kMostLeading) break;
            if (!bands_[i].isMultiple()) {
                if (++singles > kMostSingles) break;
                continue;
            }
            const std::size_t now = stripesOf(begin, i + 1).size();
            if (now == 0 || (now < columns && columns > 1 && now < bands_[i].lines.size() - 1)) break;
            columns = now;
            singles = 0;
            end = i + 1;
        }
        // Single lines at the end continue a cell of the last row if they are close and inside one column.
        return end;
    }

    /// The free stripes between the columns of some bands.
    [[nodiscard]] std::vector<Stripe> stripesOf(std::size_t begin, std::size_t end) const {
        std::vector<std::pair<float, int>> events;
        std::size_t multiples = 0;
        float size = 0;
        for (std::size_t i = begin; i < end; ++i) {
            if (!bands_[i].isMultiple()) continue;
            ++multiples;
            size = std::max(size, bands_[i].size);
            work_ += bands_[i].lines.size();
            for (const std::uint32_t line : bands_[i].lines) {
                events.emplace_back(lines_[line].left, 1);
                events.emplace_back(lines_[line].right, -1);
            }
        }
        std::sort(events.begin(), events.end());
        const int tolerance = static_cast<int>(kCrossingShare * static_cast<float>(multiples));
        std::vector<Stripe> stripes;
        int covered = 0;
        bool seen = false;
        float free = 0;
        for (const auto& [x, change] : events) {
            const bool wasFree = covered <= tolerance;
            covered += change;
            const bool isFree = covered <= tolerance;
            if (!wasFree && isFree) free = x;
            if (wasFree && !isFree) {
                if (seen && x - free > kLeastStripe * size) stripes.push_back({free, x});
                seen = true;
            }
        }
        return stripes;
    }

    /// Whether the bands of a region are rows of a table, and not columns of text or a list.
    [[nodiscard]] bool isTable(std::size_t begin, std::size_t end) const {
        const std::vector<Stripe> stripes = stripesOf(begin, end);
        if (stripes.empty()) return false;
        const std::size_t columns = stripes.size() + 1;
        std::vector<std::size_t> cells(columns);
        std::vector<std::size_t> prose(columns);
        std::vector<std::size_t> labels(columns);
        std::size_t numeric = 0;
        std::size_t all = 0;
        std::size_t multiples = 0;
        for (std::size_t i = begin; i < end; ++i) {
            if (!bands_[i].isMultiple()) continue;
            ++multiples;
            for (const std::uint32_t line : bands_[i].lines) {
                const std::size_t column = columnOf(lines_[line], stripes);
                ++all;
                ++cells[column];
                prose[column] += texts_[line].size() > kProse ? 1 : 0;
                labels[column] += isListLabel(texts_[line]) ? 1 : 0;
                numeric += isNumeric(texts_[line]) ? 1 : 0;
            }
        }
        if (multiples < 2) return false;
        std::size_t proseColumns = 0;
        for (std::size_t i = 0; i < columns; ++i)
            proseColumns += 2 * prose[i] > cells[i] ? 1 : 0;
        if (columns == 2 && 4 * labels[0] > 3 * cells[0]) return false; // a list
        const bool ruled = hasRulings(begin, end);
        if (proseColumns >= 2 || (columns == 2 && proseColumns == 1)) return ruled && proseColumns < columns;
        if (columns == 2) return (multiples >= 3 && (4 * numeric >= all || ruled)) || (multiples >= 2 && ruled);
        return multiples >= 3 || ruled || 3 * numeric >= all;
    }

    /// Whether at least two horizontal rulings cross most of the region.
    [[nodiscard]] bool hasRulings(std::size_t begin, std::size_t end) const {
        float left = 0;
        float right = 0;
        extents(begin, end, left, right);
        const float top = bands_[begin].top + bands_[begin].size;
        const float bottom = bands_[end - 1].bottom - bands_[end - 1].size;
        std::size_t count = 0;
        for (const Ruling& ruling : rulings_) {
            const bool inside = ruling.top < top && ruling.bottom > bottom;
            const float common = std::min(right, ruling.right) - std::max(left, ruling.left);
            if (inside && common > (right - left) / 2) ++count;
        }
        return count >= 2;
    }

    void extents(std::size_t begin, std::size_t end, float& left, float& right) const {
        left = lines_[bands_[begin].lines.front()].left;
        right = lines_[bands_[begin].lines.back()].right;
        for (std::size_t i = begin; i < end; ++i) {
            for (const std::uint32_t line : bands_[i].lines) {
                left = std::min(left, lines_[line].left);
                right = std::max(right, lines_[line].right);
            }
        }
    }

    [[nodiscard]] static std::size_t columnOf(const Line& line, const std::vector<Stripe>& stripes) {
        const float middle = (line.left + line.right) / 2;
        std::size_t column = 0;
        while (column < stripes.size() && (stripes[column].left + stripes[column].right) / 2 < line.left) // left of it
            ++column;
        // A cell that reaches over several columns belongs to the first one, a misaligned one to where its middle is.
        while (column < stripes.size() && stripes[column].right < middle && stripes[column].left < line.left)
            ++column;
        return column;
    }

    [[nodiscard]] Table makeTable(std::size_t begin, std::size_t end) const {
        const std::vector<Stripe> stripes = stripesOf(begin, end);
        Table table;
        extents(begin, end, table.left, table.right);
        table.top = bands_[begin].top;
        table.bottom = bands_[end - 1].bottom;
        for (std::size_t i = begin; i < end; ++i) {
            const Band& band = bands_[i];
            const std::uint32_t first = band.lines.front();
            const std::size_t column = columnOf(lines_[first], stripes);
            const bool hasCellAbove = !table.rows.empty() && column < table.rows.back().cells.size();
            if (!band.isMultiple() && hasCellAbove && continues(i, stripes))
                table.rows.back().cells[column].push_back(first);
            else
                table.rows.push_back(makeRow(band, stripes));
        }
        return table;
    }

    [[nodiscard]] Row makeRow(const Band& band, const std::vector<Stripe>& stripes) const {
        Row row = rowOf(lines_[band.lines.front()], band.lines.front());
        row.cells.assign(stripes.size() + 1, {});
        for (const std::uint32_t line : band.lines) {
            row.cells[columnOf(lines_[line], stripes)].push_back(line);
            extend(row, lines_[line]);
        }
        if (!band.isMultiple()) row.cells.assign(1, {band.lines.front()}); // a heading inside the table
        row.isTableRow = true;
        return row;
    }

    /// Whether a band of one line goes on in the cell above it: it is closer than the rows are.
    [[nodiscard]] bool continues(std::size_t at, const std::vector<Stripe>& stripes) const {
        const Line& line = lines_[bands_[at].lines.front()];
        const std::size_t column = columnOf(line, stripes);
        if (column < stripes.size() && line.right > stripes[column].right) return false; // reaches over columns
        const float above = leadingBetween(bands_[at - 1], bands_[at]);
        const float below = at + 1 < bands_.size() ? leadingBetween(bands_[at], bands_[at + 1]) : kMostLeading;
        constexpr float kCloser = 0.1F;
        if (above + kCloser < below) return true;
        const std::u32string_view text = texts_[bands_[at].lines.front()];
        const bool goesOn = !text.empty() && ((text.front() >= 'a' && text.front() <= 'z') || text.front() == '(');
        return goesOn && above < below + kCloser;
    }

    std::span<const Line> lines_;
    std::span<const std::u32string_view> texts_;
    std::span<const Ruling> rulings_;
    std::vector<Band> bands_;
    std::vector<Table> tables_;
    mutable std::size_t work_ = 0; ///< lines that the search for stripes has looked at
};

} // namespace

std::vector<Table> tablesOf(std::span<const Line> lines, std::span<const std::u32string_view> texts,
                            std::span<const Ruling> rulings) {
    return TableFinder(lines, texts, rulings).find();
}

} // namespace quillow::pdf
