#include "engines/pdf/layout/Table.h"

#include "engines/pdf/layout/AlignedTable.h"
#include "engines/pdf/layout/Band.h"
#include "engines/pdf/layout/Columns.h"
#include "engines/pdf/layout/GridTable.h"
#include "engines/pdf/layout/LineWords.h"
#include "engines/pdf/layout/Stripes.h"
#include "engines/pdf/layout/TaggedTable.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <optional>
#include <utility>

namespace quillow::pdf {

namespace {

/// Vertical extents with so much in common are one band.
constexpr float kSameBand = 0.5F;
/// Bands with so much in common are of one row: lines below one another never have.
constexpr float kInterleaved = 0.2F;
/// Single lines of the head above the first band of several cells, at most.
constexpr std::size_t kMostBandsAbove = 4;
/// They are at most so far apart. In ems.
constexpr float kMostGapAbove = 1.0F;
/// Bands further apart are not of one table unless rulings connect them. In ems.
constexpr float kMostLeading = 2.0F;
/// A stripe between columns is at least so wide. In ems.
constexpr float kLeastStripe = 0.4F;
/// A cell that reaches over several columns, or a misaligned one, may cross a stripe in so few of the bands.
constexpr float kCrossingShare = 0.06F;
/// The same for pieces of lines: headings reach over several columns in one or two bands of a short table.
constexpr float kFineCrossingShare = 0.2F;
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

bool isListLabel(std::u32string_view text) {
    if (text.size() > kLongestLabel) return false;
    if (text.size() == 1) return !isDigitLike(text[0]) && !isLetterLike(text[0]) ? true : isLetterLike(text[0]);
    const char32_t last = text.back();
    return last == '.' || last == ')' || last == ':' || last == ']';
}

template <class Less>
void sortUnlessSorted(std::span<std::uint32_t> lines, Less less) {
    if (!std::is_sorted(lines.begin(), lines.end(), less)) std::stable_sort(lines.begin(), lines.end(), less);
}

class TableFinder {
public:
    TableFinder(const Page& page, Orientation& orientation, Lines& found, std::span<const std::u32string_view> texts,
                const Rulings& rulings, Evidence* evidence)
        : page_(page)
        , orientation_(orientation)
        , found_(found)
        , lines_(found.lines)
        , texts_(texts)
        , rulings_(rulings)
        , evidence_(evidence)
        , words_(page, orientation, found)
        , isTaken_(found.lines.size()) {}

    std::vector<Table> find() && {
        findGrids();
        findTagged();
        if (evidence_ == nullptr && areBelowOneAnother()) return std::move(tables_);
        const std::vector<std::uint32_t> columns = columnsOf(std::span(lines_).first(texts_.size()), evidence_);
        std::vector<std::vector<std::uint32_t>> members(1 + *std::max_element(columns.begin(), columns.end()));
        for (std::uint32_t i = 0; i < texts_.size(); ++i)
            members[columns[i]].push_back(i);
        for (const std::vector<std::uint32_t>& column : members)
            findAligned(column);
        return std::move(tables_);
    }

private:
    /// Finds the tables without rulings of a column of text.
    void findAligned(std::span<const std::uint32_t> column) {
        makeBands(column);
        std::size_t i = 0;
        std::size_t first = 0; // the band after the last table
        while (i < bands_.size() && work_ < kMostWork + kMostWorkALine * lines_.size()) {
            const std::size_t end = bands_[i].isMultiple() ? growRegion(i) : i;
            if (end > i + 1 && isTable(i, end)) {
                const auto [from, to] = extended(first, i, end);
                tables_.push_back(makeTable(from, to));
                i = first = to;
            } else {
                ++i;
            }
        }
    }

    /// Whether no two lines have a height in common. Then there is no table without rulings, and no columns.
    [[nodiscard]] bool areBelowOneAnother() {
        bandLines_.resize(texts_.size());
        std::iota(bandLines_.begin(), bandLines_.end(), 0U);
        sortByBaseline(bandLines_);
        for (std::size_t i = 1; i < bandLines_.size(); ++i)
            if (!(lines_[bandLines_[i]].top <= lines_[bandLines_[i - 1]].bottom)) return false;
        return true;
    }

    void sortByBaseline(std::span<std::uint32_t> lines) const {
        sortUnlessSorted(lines,
                         [this](std::uint32_t a, std::uint32_t b) { return lines_[a].baseline > lines_[b].baseline; });
    }

    /// Takes the lines of the tables that are ruled.
    void findGrids() {
        const std::vector<Grid> grids = gridsOf(rulings_);
        if (grids.empty()) return;
        std::vector<std::vector<std::uint32_t>> inside(grids.size());
        for (std::uint32_t i = 0; i < texts_.size(); ++i) {
            const float x = (lines_[i].left + lines_[i].right) / 2;
            const float y = (lines_[i].bottom + lines_[i].top) / 2;
            for (std::size_t g = 0; g < grids.size(); ++g)
                if (grids[g].cellAt(x, y) != Grid::kOutside) inside[g].push_back(i);
        }
        for (std::size_t g = 0; g < grids.size(); ++g) {
            std::erase_if(inside[g], [this](std::uint32_t line) { return isTaken_[line]; });
            if (inside[g].size() < 2) continue;
            std::optional<Table> table = tableIn(grids[g], inside[g], page_, orientation_, words_, found_, evidence_);
            if (!table) continue;
            for (const std::uint32_t line : inside[g])
                isTaken_[line] = true;
            tables_.push_back(std::move(*table));
        }
    }

    /// Takes the lines of the tables that the structure tree names. Rulings are better evidence: producers that guess
    /// the tags of a page make a row of each line.
    void findTagged() {
        for (Table& table : taggedTablesOf(page_, orientation_, found_, isTaken_)) {
            for (const std::uint32_t line : table.lines)
                isTaken_[line] = true;
            tables_.push_back(std::move(table));
        }
    }

    void makeBands(std::span<const std::uint32_t> column) {
        bandLines_.clear();
        for (const std::uint32_t line : column)
            if (!isTaken_[line]) bandLines_.push_back(line);
        sortByBaseline(bandLines_);
        bands_.clear();
        stripes_ = {};
        std::size_t begin = 0; // of the band
        for (std::size_t i = 0; i < bandLines_.size(); ++i) {
            const Line& line = lines_[bandLines_[i]];
            if (bands_.empty() || verticalOverlap(bands_.back(), line) < kSameBand) {
                bands_.push_back({{}, line.bottom, line.top, line.size});
                begin = i;
            }
            bands_.back().lines = std::span(bandLines_).subspan(begin, i + 1 - begin);
        }
        std::uint32_t* lines = bandLines_.data();
        for (const Band& band : bands_) {
            sortUnlessSorted(std::span(lines, band.lines.size()),
                             [this](std::uint32_t a, std::uint32_t b) { return lines_[a].left < lines_[b].left; });
            lines += band.lines.size();
        }
    }

    /// The end of the bands that may be one table with the band at `begin`.
    std::size_t growRegion(std::size_t begin) {
        std::size_t end = begin + 1;
        std::size_t singles = 0;
        std::size_t multiples = 1;
        float size = bands_[begin].size;
        std::size_t lines = 0;
        coverage_.reset(crossingIn(std::min(kMostBands, bands_.size() - begin)));
        const auto add = [&](const Band& band) {
            lines += band.lines.size();
            for (const std::uint32_t line : band.lines)
                coverage_.add(lines_[line].left, lines_[line].right);
        };
        const auto stripesSoFar = [&] {
            work_ += 2 * lines;
            return coverage_.stripeCount(crossingIn(multiples), kLeastStripe * size);
        };
        add(bands_[begin]);
        std::size_t columns = stripesSoFar();
        for (std::size_t i = begin + 1; i < bands_.size() && i - begin < kMostBands; ++i) {
            if (gapBetween(bands_[i - 1], bands_[i]) > kMostLeading) break;
            if (!bands_[i].isMultiple()) {
                if (++singles > kMostSingles) break;
                continue;
            }
            ++multiples;
            size = std::max(size, bands_[i].size);
            add(bands_[i]);
            const std::size_t now = stripesSoFar();
            if (now == 0 || (now < columns && columns > 1 && now < bands_[i].lines.size() - 1)) break;
            columns = now;
            singles = 0;
            end = i + 1;
        }
        // Single lines at the end continue a cell of the last row if they are close and inside one column.
        return end;
    }

    /// Adds the single lines at both ends of a table: lines of centred cells, and headings over several columns.
    [[nodiscard]] std::pair<std::size_t, std::size_t> extended(std::size_t first, std::size_t begin, std::size_t end) {
        const auto isInterleaved = [this](std::size_t edge, std::size_t beyond) {
            const Band& band = bands_[beyond];
            return !band.isMultiple() && texts_[band.lines.front()].size() <= kProse &&
                   verticalOverlap(bands_[edge], band) > kInterleaved;
        };
        if (end < bands_.size() && isInterleaved(end - 1, end)) ++end;
        if (begin > first && isInterleaved(begin, begin - 1)) --begin;
        const std::vector<Stripe> stripes = stripesOf(begin, end);
        if (stripes.empty()) return {begin, end};
        float left = 0;
        float right = 0;
        extents(begin, end, left, right);
        for (std::size_t i = begin; i > first && begin - i < kMostBandsAbove; --i) {
            const float above =
                i > 1 ? bands_[i - 2].bottom : bands_[i - 1].top + 2 * kMostGapAbove * bands_[i - 1].size;
            if (i < begin && hasRulingBetween(bands_[i].top, above, left, right)) return {i, end};
            if (isUnderlinedHeading(bands_[i - 1], bands_[i], stripes)) return {i - 1, end};
            const Line& line = lines_[bands_[i - 1].lines.front()];
            if (line.left < stripes.front().left || line.right > right + line.size) break;
            if (gapBetween(bands_[i - 1], bands_[i]) > kMostGapAbove) break;
            if (hasRulingBetween(bands_[i].top, bands_[i - 1].bottom, left, right)) break;
        }
        return {begin, end};
    }

    /// Whether there is a ruling below the only line of a band that is wider than the line and reaches over columns,
    /// but not over the first one.
    [[nodiscard]] bool isUnderlinedHeading(const Band& band, const Band& below, std::span<const Stripe> stripes) {
        const Line& line = lines_[band.lines.front()];
        if (band.isMultiple() || gapBetween(band, below) > kMostGapAbove) return false;
        const auto begin =
            std::lower_bound(rulings_.horizontal.begin(), rulings_.horizontal.end(), below.top - below.size / 2,
                             [](const Ruling& ruling, float at) { return ruling.at < at; });
        return std::any_of(begin, rulings_.horizontal.end(), [&](const Ruling& ruling) {
            return ruling.at < line.bottom + line.size / 2 && ruling.from < line.left && ruling.to > line.right &&
                   ruling.from > stripes.front().left && ruling.to - ruling.from > line.width() + line.size &&
                   countPieces(below, ruling) > 1;
        });
    }

    /// How many pieces of a band are below a ruling.
    [[nodiscard]] std::size_t countPieces(const Band& band, const Ruling& ruling) {
        std::vector<Word> pieces;
        for (const std::uint32_t line : band.lines)
            words_.appendPieces(line, pieces);
        return static_cast<std::size_t>(std::count_if(pieces.begin(), pieces.end(), [&ruling](const Word& piece) {
            const float middle = (piece.left + piece.right) / 2;
            return middle > ruling.from && middle < ruling.to;
        }));
    }

    /// Whether there is a horizontal ruling across most of a table at a height.
    [[nodiscard]] bool hasRulingBetween(float bottom, float top, float left, float right) const {
        constexpr float kWideShare = 0.8F;
        constexpr float kTouch = 1; // point
        const auto begin = std::lower_bound(rulings_.horizontal.begin(), rulings_.horizontal.end(), bottom - kTouch,
                                            [](const Ruling& ruling, float at) { return ruling.at < at; });
        for (auto ruling = begin; ruling != rulings_.horizontal.end() && ruling->at < top + kTouch; ++ruling)
            if (std::min(ruling->to, right) - std::max(ruling->from, left) > kWideShare * (right - left)) return true;
        return false;
    }

    /// How many lines of so many bands may reach over a stripe.
    [[nodiscard]] static std::size_t crossingIn(std::size_t multiples) {
        return static_cast<std::size_t>(kCrossingShare * static_cast<float>(multiples));
    }

    /// The free stripes between the columns of some bands. Remembers the last answer.
    [[nodiscard]] const std::vector<Stripe>& stripesOf(std::size_t begin, std::size_t end) {
        if (stripes_.begin != begin || stripes_.end != end) findStripes(begin, end);
        work_ += stripes_.lines;
        return stripes_.found;
    }

    void findStripes(std::size_t begin, std::size_t end) {
        std::size_t multiples = 0;
        std::size_t lines = 0;
        float size = 0;
        for (std::size_t i = begin; i < end; ++i) {
            if (!bands_[i].isMultiple()) continue;
            ++multiples;
            size = std::max(size, bands_[i].size);
            lines += bands_[i].lines.size();
        }
        const std::size_t crossing = crossingIn(multiples);
        coverage_.reset(crossing);
        for (std::size_t i = begin; i < end; ++i) {
            if (!bands_[i].isMultiple()) continue;
            for (const std::uint32_t line : bands_[i].lines)
                coverage_.add(lines_[line].left, lines_[line].right);
        }
        stripes_ = {begin, end, lines, coverage_.stripes(crossing, kLeastStripe * size)};
    }

    /// Whether the bands of a region are rows of a table, and not columns of text or a list.
    [[nodiscard]] bool isTable(std::size_t begin, std::size_t end) {
        if (isNumeric_.empty()) isNumeric_.resize(texts_.size());
        const std::vector<Stripe>& stripes = stripesOf(begin, end);
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
                numeric += isNumeric(line) ? 1 : 0;
            }
        }
        if (multiples < 2) return false;
        std::size_t proseColumns = 0;
        for (std::size_t i = 0; i < columns; ++i)
            proseColumns += 2 * prose[i] > cells[i] ? 1 : 0;
        if (columns == 2 && 4 * labels[0] > 3 * cells[0]) {
            if (evidence_ != nullptr)
                note(false, begin, end, "a table but a list",
                     {{"labels", static_cast<float>(labels[0])}, {"of", static_cast<float>(cells[0])}});
            return false;
        }
        const bool ruled = hasRulings(begin, end);
        const auto judge = [&](bool isAccepted, std::string_view reason) {
            if (evidence_ != nullptr)
                note(isAccepted, begin, end, reason,
                     {{"columns", static_cast<float>(columns)},
                      {"of sentences", static_cast<float>(proseColumns)},
                      {"rows", static_cast<float>(multiples)},
                      {"cells", static_cast<float>(all)},
                      {"numbers", static_cast<float>(numeric)},
                      {"ruled", ruled ? 1.0F : 0.0F}});
            return isAccepted;
        };
        if (proseColumns >= 2 || (columns == 2 && proseColumns == 1))
            return judge(ruled && proseColumns < columns, "a table of sentences: needs rulings");
        if (columns == 2)
            return judge((multiples >= 3 && (4 * numeric >= all || ruled)) || (multiples >= 2 && ruled),
                         "a table of two columns: needs numbers in a quarter of the cells, or rulings");
        return judge(multiples >= 3 || ruled || 3 * numeric >= all,
                     "a table of aligned columns: needs three rows, rulings, or numbers in a third of the cells");
    }

    /// Remembers it: many regions have the same lines.
    [[nodiscard]] bool isNumeric(std::uint32_t line) {
        if (!isNumeric_[line]) isNumeric_[line] = countsOf(texts_[line]).isNumeric();
        return *isNumeric_[line];
    }

    void note(bool isAccepted, std::size_t begin, std::size_t end, std::string_view reason,
              std::initializer_list<Fact> facts) const {
        Box area{0, bands_[end - 1].bottom, 0, bands_[begin].top};
        extents(begin, end, area.left, area.right);
        evidence_->note(Topic::table, isAccepted ? Verdict::accepted : Verdict::refused, area, reason, facts);
    }

    /// Whether at least two horizontal rulings cross most of the region.
    [[nodiscard]] bool hasRulings(std::size_t begin, std::size_t end) const {
        float left = 0;
        float right = 0;
        extents(begin, end, left, right);
        const float top = bands_[begin].top + bands_[begin].size;
        const float bottom = bands_[end - 1].bottom - bands_[end - 1].size;
        std::size_t count = 0;
        for (const Ruling& ruling : rulings_.horizontal) {
            const bool inside = ruling.at < top && ruling.at > bottom;
            const float common = std::min(right, ruling.to) - std::max(left, ruling.from);
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

    [[nodiscard]] static std::size_t columnOf(const auto& line, std::span<const Stripe> stripes) {
        return pdf::columnOf(line.left, line.right, stripes);
    }

    /// The stripes between columns that are nearer to each other than two lines: gaps wider than blanks, one below the
    /// other.
    [[nodiscard]] std::vector<Stripe> fineStripesOf(std::size_t begin, std::size_t end) {
        std::vector<Edge> events;
        std::vector<Word> pieces;
        std::size_t multiples = 0;
        float size = 0;
        for (std::size_t i = begin; i < end; ++i) {
            if (!bands_[i].isMultiple()) continue;
            ++multiples;
            size = std::max(size, bands_[i].size);
            pieces.clear();
            for (const std::uint32_t line : bands_[i].lines)
                words_.appendPieces(line, pieces);
            for (const Word& piece : pieces) {
                events.emplace_back(piece.left, 1);
                events.emplace_back(piece.right, -1);
            }
        }
        std::sort(events.begin(), events.end());
        return freeStripes(events, kFineCrossingShare * static_cast<float>(multiples), kLeastStripe * size);
    }

    [[nodiscard]] Table makeTable(std::size_t begin, std::size_t end) {
        std::vector<Stripe> stripes = fineStripesOf(begin, end);
        if (const std::vector<Stripe> coarse = stripesOf(begin, end); stripes.size() < coarse.size()) stripes = coarse;
        AlignedTable table(page_, orientation_, found_, texts_, words_, {bands_, begin, end, stripes});
        return std::move(table).make(rulings_.horizontal);
    }

    const Page& page_;
    Orientation& orientation_;
    Lines& found_;
    std::vector<Line>& lines_; ///< of `found_`
    std::span<const std::u32string_view> texts_;
    const Rulings& rulings_;
    Evidence* evidence_;
    LineWords words_;
    std::vector<bool> isTaken_;            ///< lines of ruled and of tagged tables
    std::vector<std::uint32_t> bandLines_; ///< the lines of the bands
    std::vector<Band> bands_;
    std::vector<std::optional<bool>> isNumeric_; ///< whether the text of a line is, as far as it is known
    /// The answer of `stripesOf`, and what it was asked for.
    struct Stripes {
        std::size_t begin = 0;
        std::size_t end = 0;
        std::size_t lines = 0; ///< of the bands
        std::vector<Stripe> found;
    };
    Stripes stripes_;
    Coverage coverage_{0}; ///< of a region
    std::vector<Table> tables_;
    std::size_t work_ = 0; ///< lines that the search for stripes has looked at
};

} // namespace

std::vector<Table> tablesOf(const Page& page, Orientation& orientation, Lines& found,
                            std::span<const std::u32string_view> texts, const Rulings& rulings, Evidence* evidence) {
    return TableFinder(page, orientation, found, texts, rulings, evidence).find();
}

} // namespace quillow::pdf
