#include "engines/pdf/layout/Columns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>

namespace quillow::pdf {

namespace {

/// Lines of running text are at least so wide, in ems: three columns of a magazine are. Cells of tables seldom are.
constexpr float kLeastProse = 9.0F;
/// So many of them make a column; fewer may be a cell.
constexpr std::size_t kLeastLines = 4;
/// So many lines beside a gutter between columns lengthen it.
constexpr std::size_t kLeastParagraph = 2;
/// So much of the width of a column is filled by its lines: in running text all but the last line of a paragraph reach
/// the margin or nearly so.
constexpr float kFilled = 0.75F;
/// Lines of a paragraph are at most so far apart, in ems, between the letters. Line spacing of 1.5 is within it.
constexpr float kMostLeading = 1.2F;
/// Lines of a text have the same leading but for so much, in ems: superscripts and formulas change it a little.
constexpr float kSameLeading = 0.35F;
/// Sizes of letters in one column of text differ by less.
constexpr float kSameSize = 0.8F;
/// Vertical extents with so much in common are one row.
constexpr float kSameRow = 0.5F;
/// A gutter is at least so wide, in points.
constexpr float kLeastGutter = 5.0F;
/// A gutter between columns is at most so wide, in ems. Cells of several lines are often further apart.
constexpr float kMostGutter = 5.0F;
/// Boxes may overlap by so much and still be apart: letters reach beyond their boxes. In points.
constexpr float kTouch = 1.0F;
/// So many lines on each side of a gutter that goes through the page show whether they are in common rows.
constexpr std::size_t kLeastIndependent = 8;
/// A smaller share of lines has the baseline of a line on the other side by chance.
constexpr float kMostAligned = 0.5F;
/// So many such lines in succession are rows of a table.
constexpr std::size_t kRowsOfTable = 3;
/// Lines of a block are at most so far apart, in ems, as in a form or a list with wide spacing.
constexpr float kMostDistance = 3.0F;
/// So many rows of two blocks at one height show whether they are common rows.
constexpr std::size_t kLeastRows = 3;
/// What is drawn by rows has all its columns in them. A block beside it that is drawn by itself is no column of it,
/// even if some of its lines have the baselines of rows.
constexpr float kMostAlignedOfRows = 0.75F;
/// A text is compared with so many of the next texts below its top. More are not side by side on a page.
constexpr std::size_t kMostNeighbours = 16;
/// More gutters than a page has.
constexpr std::size_t kMostGutters = 64;
/// More columns than a page has.
constexpr int kMostColumns = 8;

/// Lines of running text that follow one another in content order.
struct Text {
    std::size_t count = 0;
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
    float size = 0;    ///< of its first line
    float leading = 0; ///< the free space between its first two lines
    float filled = 0;  ///< the sum of the widths of its lines

    [[nodiscard]] float height() const { return top - bottom; }
    [[nodiscard]] bool isFilled() const { return filled > kFilled * static_cast<float>(count) * (right - left); }
    [[nodiscard]] bool isColumn() const { return count >= kLeastLines && isFilled(); }
    [[nodiscard]] bool isParagraph() const { return count >= kLeastParagraph && isFilled(); }
};

/// A free stripe between texts.
struct Gutter {
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
};

bool isNextLine(const Line& above, const Line& below) {
    const float size = std::max(above.size, below.size);
    const float distance = above.bottom - below.top;
    return std::min(above.size, below.size) > kSameSize * size && distance > -kSameRow * size &&
           distance < kMostLeading * size && above.left < below.right && below.left < above.right;
}

std::vector<Text> textsOf(std::span<const Line> lines) {
    std::vector<Text> texts;
    Text text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        const bool isWide = line.width() > kLeastProse * line.size;
        const float distance = i > 0 ? lines[i - 1].bottom - line.top : 0;
        const bool goesOn = text.count > 0 && isNextLine(lines[i - 1], line) &&
                            (text.count == 1 || std::abs(distance - text.leading) < kSameLeading * line.size);
        if (!goesOn) {
            if (text.isParagraph()) texts.push_back(text);
            text = {};
            if (!isWide) continue;
            text = {1, line.left, line.right, line.bottom, line.top, line.size, 0, line.width()};
            continue;
        }
        if (text.count == 1) text.leading = distance;
        ++text.count;
        text.left = std::min(text.left, line.left);
        text.right = std::max(text.right, line.right);
        text.bottom = std::min(text.bottom, line.bottom);
        text.filled += line.width();
    }
    if (text.isParagraph()) texts.push_back(text);
    return texts;
}

/// Lengthens a gutter along the texts beside it as far as no line crosses it.
void lengthen(Gutter& gutter, std::span<const Text> texts, std::span<const Line> lines) {
    const float middle = (gutter.bottom + gutter.top) / 2;
    float highest = std::numeric_limits<float>::max();
    float lowest = std::numeric_limits<float>::lowest();
    for (const Line& line : lines) {
        if (line.right < gutter.right || line.left > gutter.left) continue;
        if (line.bottom > middle)
            highest = std::min(highest, line.bottom);
        else
            lowest = std::max(lowest, line.top);
    }
    for (const Text& text : texts) {
        if (text.right >= gutter.right && text.left <= gutter.left) continue;
        if (text.top < highest + kTouch) gutter.top = std::max(gutter.top, text.top);
        if (text.bottom > lowest - kTouch) gutter.bottom = std::min(gutter.bottom, text.bottom);
    }
}

bool isSameGutter(const Gutter& a, const Gutter& b) {
    return std::min(a.right, b.right) - std::max(a.left, b.left) >= kLeastGutter && a.bottom <= b.top &&
           b.bottom <= a.top;
}

/// Adds the gutters between texts side by side.
void addGuttersOfTexts(std::vector<Text> texts, std::span<const Line> lines, std::vector<Gutter>& gutters,
                       Evidence* evidence) {
    std::sort(texts.begin(), texts.end(), [](const Text& a, const Text& b) { return a.top > b.top; });
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const Text& a = texts[i];
        const std::size_t end = std::min(texts.size(), i + 1 + kMostNeighbours);
        for (std::size_t k = i + 1; k < end && texts[k].top > a.bottom; ++k) {
            const Text& b = texts[k];
            if (!a.isColumn() || !b.isColumn() || verticalOverlap(a, b) < kSameRow) continue;
            Gutter gutter{std::min(a.right, b.right), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
                          std::max(a.top, b.top)};
            const float width = gutter.right - gutter.left;
            const bool isGutter = width >= kLeastGutter && width <= kMostGutter * a.size;
            if (evidence != nullptr && (width > 0 || isGutter))
                evidence->note(Topic::gutter, isGutter ? Verdict::accepted : Verdict::refused, gutter,
                               "a gutter: texts of several lines are side by side",
                               {{"wide", width},
                                {"kLeastGutter", kLeastGutter},
                                {"at most", kMostGutter * a.size},
                                {"lines left", static_cast<float>((a.left < b.left ? a : b).count)},
                                {"lines right", static_cast<float>((a.left < b.left ? b : a).count)}});
            if (!isGutter) continue;
            const auto isSame = [&gutter](const Gutter& other) { return isSameGutter(gutter, other); };
            if (std::any_of(gutters.begin(), gutters.end(), isSame)) continue;
            if (gutters.size() == kMostGutters) return;
            lengthen(gutter, texts, lines);
            gutters.push_back(gutter);
        }
    }
}

/// How many lines of the smaller one of two sides have the baseline of a line of the other side.
struct CommonRows {
    std::size_t lines = 0; ///< of the smaller side
    std::size_t aligned = 0;
    bool isTable = false; ///< several in succession are aligned

    /// Whether the sides have no rows in common: few lines are aligned.
    [[nodiscard]] bool areIndependent() const {
        return lines >= kLeastIndependent && !isTable &&
               static_cast<float>(aligned) < kMostAligned * static_cast<float>(lines);
    }
};

CommonRows commonRowsOf(std::vector<float>& left, std::vector<float>& right) {
    CommonRows common;
    common.lines = std::min(left.size(), right.size());
    if (common.lines < kLeastIndependent) return common;
    std::sort(left.begin(), left.end());
    std::sort(right.begin(), right.end());
    const std::vector<float>& more = left.size() > right.size() ? left : right;
    const std::vector<float>& fewer = left.size() > right.size() ? right : left;
    std::size_t inSuccession = 0;
    for (const float baseline : fewer) {
        const auto near = std::lower_bound(more.begin(), more.end(), baseline - kTouch);
        const bool isAligned = near != more.end() && *near < baseline + kTouch;
        inSuccession = isAligned ? inSuccession + 1 : 0;
        common.aligned += isAligned ? 1 : 0;
        common.isTable = inSuccession == kRowsOfTable;
        if (common.isTable) break;
    }
    return common;
}

void noteStripe(const CommonRows& common, const Gutter& stripe, Evidence& evidence) {
    const auto lines = static_cast<float>(common.lines);
    const auto aligned = static_cast<float>(common.aligned);
    if (common.lines < kLeastIndependent)
        evidence.note(Topic::gutter, Verdict::refused, stripe, "a gutter of the page: few lines are on one side",
                      {{"lines", lines}, {"kLeastIndependent", static_cast<float>(kLeastIndependent)}});
    else if (common.isTable)
        evidence.note(Topic::gutter, Verdict::refused, stripe,
                      "a gutter of the page: several lines in succession have common baselines",
                      {{"kRowsOfTable", static_cast<float>(kRowsOfTable)}});
    else
        evidence.note(Topic::gutter, common.areIndependent() ? Verdict::accepted : Verdict::refused, stripe,
                      "a gutter of the page: the sides have rows of their own",
                      {{"lines", lines}, {"with common baselines", aligned}, {"kMostAligned", kMostAligned}});
}

/// Whether the line that ends last begins where the first ones do: then no stripe is free through the whole page.
bool isWholeWidthUsed(std::span<const Line> lines) {
    float left = std::numeric_limits<float>::max();
    const Line* last = nullptr;
    for (const Line& line : lines) {
        left = std::min(left, line.left);
        if (last == nullptr || line.right > last->right) last = &line;
    }
    return last != nullptr && last->left <= left + kLeastGutter;
}

/// Adds the gutters that go through the whole page and part lines that are not in common rows.
void addGuttersOfPage(std::span<const Line> lines, std::vector<Gutter>& gutters, Evidence* evidence) {
    if (isWholeWidthUsed(lines)) return;
    std::vector<std::uint32_t> byLeft(lines.size());
    std::iota(byLeft.begin(), byLeft.end(), 0U);
    std::sort(byLeft.begin(), byLeft.end(),
              [lines](std::uint32_t a, std::uint32_t b) { return lines[a].left < lines[b].left; });
    float right = std::numeric_limits<float>::max();
    float bottom = std::numeric_limits<float>::max();
    float top = std::numeric_limits<float>::lowest();
    for (const Line& line : lines) {
        bottom = std::min(bottom, line.bottom);
        top = std::max(top, line.top);
    }
    int tried = 0;
    for (std::size_t i = 0; i < byLeft.size(); ++i) {
        const Line& line = lines[byLeft[i]];
        if (line.left > right + kLeastGutter && tried++ < kMostColumns) {
            std::vector<float> before;
            std::vector<float> after;
            for (std::size_t k = 0; k < byLeft.size(); ++k)
                (k < i ? before : after).push_back(lines[byLeft[k]].baseline);
            const CommonRows common = commonRowsOf(before, after);
            const Gutter stripe{right, line.left, bottom, top};
            if (evidence != nullptr) noteStripe(common, stripe, *evidence);
            if (common.areIndependent()) gutters.push_back(stripe);
        }
        right = i == 0 ? line.right : std::max(right, line.right);
    }
}

/// Lines that follow one another in content order and on the page: a text, or a table that is drawn by rows.
struct Block {
    float left = 0;
    float right = 0;
    std::size_t steps = 0;  ///< how often the next line is beside the one before it
    std::vector<Line> rows; ///< from top to bottom
    [[nodiscard]] float top() const { return rows.front().top; }
    [[nodiscard]] float bottom() const { return rows.back().bottom; }
};

/// Whether a line is the next one of a block, and not in another place.
bool isNextOf(const Block& block, const Line& before, const Line& line) {
    if (verticalOverlap(before, line) > kSameRow) return line.left > before.right - kTouch;
    const float distance = before.bottom - line.top;
    const float size = std::max(before.size, line.size);
    return distance > -kSameRow * size && distance < kMostDistance * size && line.left < block.right &&
           line.right > block.left;
}

std::vector<Block> blocksOf(std::span<const Line> lines) {
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        if (i == 0 || !isNextOf(blocks.back(), lines[i - 1], line)) {
            blocks.push_back({line.left, line.right, 0, {line}});
            continue;
        }
        Block& block = blocks.back();
        block.left = std::min(block.left, line.left);
        block.right = std::max(block.right, line.right);
        if (verticalOverlap(lines[i - 1], line) <= kSameRow) {
            block.rows.push_back(line);
            continue;
        }
        ++block.steps;
        block.rows.back().right = std::max(block.rows.back().right, line.right);
    }
    std::erase_if(blocks, [](const Block& block) { return block.rows.size() < kLeastRows; });
    return blocks;
}

/// Rows of a block, from top to bottom.
struct Rows {
    float left = std::numeric_limits<float>::max();
    float right = std::numeric_limits<float>::lowest();
    std::span<const Line> lines;
};

/// The rows of a block whose baselines are between two heights.
Rows rowsBetween(const Block& block, float bottom, float top) {
    const auto first =
        std::find_if(block.rows.begin(), block.rows.end(), [top](const Line& row) { return row.baseline < top; });
    const auto last =
        std::find_if(first, block.rows.end(), [bottom](const Line& row) { return row.baseline <= bottom; });
    Rows rows;
    rows.lines = {first, last};
    for (const Line& row : rows.lines) {
        rows.left = std::min(rows.left, row.left);
        rows.right = std::max(rows.right, row.right);
    }
    return rows;
}

/// Whether the rows of two blocks side by side are their own: few rows of the smaller one have the baseline of a row of
/// the other one.
bool areOwnRows(std::span<const Line> a, std::span<const Line> b, bool areDrawnByRows) {
    const std::span<const Line> fewer = a.size() < b.size() ? a : b;
    const std::span<const Line> more = a.size() < b.size() ? b : a;
    if (fewer.size() < kLeastRows) return false;
    auto near = more.begin();
    std::size_t aligned = 0;
    for (const Line& row : fewer) {
        near = std::find_if(near, more.end(),
                            [&row](const Line& other) { return other.baseline < row.baseline + kTouch; });
        aligned += near != more.end() && near->baseline > row.baseline - kTouch ? 1 : 0;
    }
    if (areDrawnByRows) return static_cast<float>(aligned) < kMostAlignedOfRows * static_cast<float>(more.size());
    return static_cast<float>(aligned) < kMostAligned * static_cast<float>(fewer.size());
}

/// Lengthens a gutter along the rows of a block as far as they are on one side of it.
void lengthen(Gutter& gutter, const Block& block) {
    const auto crosses = [&gutter](const Line& row) { return row.right > gutter.left && row.left < gutter.right; };
    const auto middle = std::find_if(block.rows.begin(), block.rows.end(),
                                     [&gutter](const Line& row) { return row.baseline < gutter.top; });
    for (auto row = middle; row != block.rows.end() && !crosses(*row); ++row)
        gutter.bottom = std::min(gutter.bottom, row->bottom);
    for (auto row = middle; row != block.rows.begin() && !crosses(*(row - 1)); --row)
        gutter.top = std::max(gutter.top, (row - 1)->top);
}

/// Adds the gutters between blocks side by side that have rows of their own.
void addGuttersOfBlocks(std::span<const Line> lines, std::vector<Gutter>& gutters, Evidence* evidence) {
    std::vector<Block> blocks = blocksOf(lines);
    std::sort(blocks.begin(), blocks.end(), [](const Block& a, const Block& b) { return a.top() > b.top(); });
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const Block& a = blocks[i];
        const std::size_t end = std::min(blocks.size(), i + 1 + kMostNeighbours);
        for (std::size_t k = i + 1; k < end && blocks[k].top() > a.bottom(); ++k) {
            const Block& b = blocks[k];
            const float bottom = std::max(a.bottom(), b.bottom());
            const float top = std::min(a.top(), b.top());
            const Rows rowsOfA = rowsBetween(a, bottom, top);
            const Rows rowsOfB = rowsBetween(b, bottom, top);
            Gutter gutter{std::min(rowsOfA.right, rowsOfB.right), std::max(rowsOfA.left, rowsOfB.left), bottom, top};
            if (gutter.right - gutter.left < kLeastGutter) continue;
            const bool areDrawnByRows = std::max(a.steps, b.steps) >= kLeastRows;
            const bool isGutter = areOwnRows(rowsOfA.lines, rowsOfB.lines, areDrawnByRows);
            if (evidence != nullptr)
                evidence->note(Topic::gutter, isGutter ? Verdict::accepted : Verdict::refused, gutter,
                               "a gutter: blocks are side by side, with rows of their own",
                               {{"rows", static_cast<float>(rowsOfA.lines.size())},
                                {"and", static_cast<float>(rowsOfB.lines.size())},
                                {"kLeastRows", static_cast<float>(kLeastRows)},
                                {areDrawnByRows ? "kMostAlignedOfRows" : "kMostAligned",
                                 areDrawnByRows ? kMostAlignedOfRows : kMostAligned}});
            if (!isGutter) continue;
            if (gutters.size() == kMostGutters) return;
            lengthen(gutter, a);
            lengthen(gutter, b);
            gutters.push_back(gutter);
        }
    }
}

/// Lines that are drawn by rows.
class Weave {
public:
    Weave(std::vector<Line>& lines, Evidence* evidence)
        : lines_(lines)
        , evidence_(evidence) {}

    void undo() {
        std::size_t begin = 0;
        while (begin < lines_.size()) {
            std::size_t end = begin + 1;
            while (end < lines_.size() && isSequence(end))
                ++end;
            undo(begin, end, kMostColumns);
            begin = end;
        }
    }

private:
    [[nodiscard]] bool isBeside(std::size_t at) const {
        return verticalOverlap(lines_[at - 1], lines_[at]) > kSameRow && lines_[at].left > lines_[at - 1].right;
    }

    /// Whether a line is beside the one before it or begins the next row.
    [[nodiscard]] bool isSequence(std::size_t at) const {
        if (isBeside(at)) return true;
        const Line& before = lines_[at - 1];
        const Line& line = lines_[at];
        const float size = std::max(before.size, line.size);
        const float distance = before.bottom - line.top;
        return distance > -kSameRow * size && distance < kMostLeading * size;
    }

    /// Finds parts of a sequence with a common gutter after the first line of each row.
    void undo(std::size_t begin, std::size_t end, int depth) {
        if (depth == 0) return;
        while (begin < end) {
            Part part;
            std::size_t at = begin;
            while (at < end) {
                const std::size_t next = endOfRow(at, end);
                if (!add(part, at, next)) break;
                at = next;
            }
            if (at == begin) {
                begin = endOfRow(begin, end);
                continue;
            }
            if (evidence_ != nullptr && part.rows > 1) note(part, begin, at);
            if (isColumns(part)) {
                const auto from = lines_.begin() + static_cast<std::ptrdiff_t>(begin);
                const auto to = lines_.begin() + static_cast<std::ptrdiff_t>(at);
                const float gutter = part.right;
                const auto middle =
                    std::stable_partition(from, to, [gutter](const Line& line) { return line.right < gutter; });
                undo(static_cast<std::size_t>(middle - lines_.begin()), at, depth - 1);
            }
            begin = at;
        }
    }

    /// Rows with a common gutter.
    struct Part {
        std::size_t rows = 0; ///< with lines on both sides
        float left = 0;       ///< of the gutter
        float right = 0;
        float leftmost = 0;
        float rightmost = 0;
        float size = 0;
        float filledLeft = 0;
        float filledRight = 0;
    };

    [[nodiscard]] std::size_t endOfRow(std::size_t at, std::size_t end) const {
        ++at;
        while (at < end && isBeside(at))
            ++at;
        return at;
    }

    /// Adds a row to a part if it respects the gutter.
    bool add(Part& part, std::size_t at, std::size_t next) const {
        const Line& first = lines_[at];
        if (next - at == 1) {
            if (part.rows == 0) return false;
            return first.right < part.right - kLeastGutter || first.left > part.left + kLeastGutter;
        }
        const Line& second = lines_[at + 1];
        const float left = part.rows == 0 ? first.right : std::max(part.left, first.right);
        const float right = part.rows == 0 ? second.left : std::min(part.right, second.left);
        if (right - left < kLeastGutter) return false;
        part.leftmost = part.rows == 0 ? first.left : std::min(part.leftmost, first.left);
        part.rightmost = part.rows == 0 ? second.right : std::max(part.rightmost, second.right);
        ++part.rows;
        part.left = left;
        part.right = right;
        part.size = std::max(part.size, first.size);
        part.filledLeft += first.width();
        part.filledRight += second.width();
        return true;
    }

    [[nodiscard]] static bool isColumns(const Part& part) {
        const auto rows = static_cast<float>(part.rows);
        const float least = rows * kLeastProse * part.size;
        return part.rows >= kLeastLines && part.filledLeft > least && part.filledRight > least &&
               part.filledLeft > kFilled * rows * (part.left - part.leftmost) &&
               part.filledRight > kFilled * rows * (part.rightmost - part.right);
    }

    void note(const Part& part, std::size_t begin, std::size_t end) const {
        Gutter gutter{part.left, part.right, lines_[begin].bottom, lines_[begin].top};
        for (std::size_t i = begin; i < end; ++i) {
            gutter.bottom = std::min(gutter.bottom, lines_[i].bottom);
            gutter.top = std::max(gutter.top, lines_[i].top);
        }
        const auto rows = static_cast<float>(part.rows);
        evidence_->note(Topic::gutter, isColumns(part) ? Verdict::accepted : Verdict::refused, gutter,
                        "columns drawn row by row",
                        {{"rows", rows},
                         {"kLeastLines", static_cast<float>(kLeastLines)},
                         {"ems left", part.filledLeft / rows / part.size},
                         {"ems right", part.filledRight / rows / part.size},
                         {"kLeastProse", kLeastProse},
                         {"filled left", part.filledLeft / rows / (part.left - part.leftmost)},
                         {"filled right", part.filledRight / rows / (part.rightmost - part.right)},
                         {"kFilled", kFilled}});
    }

    std::vector<Line>& lines_;
    Evidence* evidence_;
};

/// Adds the area of each region but the first.
void showRegions(std::span<const Line> lines, std::span<const std::uint32_t> columns, Evidence& evidence) {
    std::vector<Box> areas(1 + *std::max_element(columns.begin(), columns.end()));
    std::vector<bool> hasLines(areas.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Box& area = areas[columns[i]];
        if (!hasLines[columns[i]]) area = {lines[i].left, lines[i].bottom, lines[i].right, lines[i].top};
        hasLines[columns[i]] = true;
        area.extendTo({lines[i].left, lines[i].bottom});
        area.extendTo({lines[i].right, lines[i].top});
    }
    for (std::size_t region = 1; region < areas.size(); ++region)
        if (hasLines[region]) evidence.show(Topic::region, areas[region]);
}

} // namespace

void unweaveColumns(std::vector<Line>& lines, Evidence* evidence) {
    Weave(lines, evidence).undo();
}

std::vector<std::uint32_t> columnsOf(std::span<const Line> lines, Evidence* evidence) {
    std::vector<std::uint32_t> columns(lines.size());
    std::vector<Gutter> gutters;
    addGuttersOfPage(lines, gutters, evidence);
    addGuttersOfTexts(textsOf(lines), lines, gutters, evidence);
    addGuttersOfBlocks(lines, gutters, evidence);
    if (gutters.empty()) return columns;
    // Two bits for each gutter: whether the line is beside it, and on which side.
    std::vector<std::pair<std::uint64_t, std::uint64_t>> places(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        for (std::size_t g = 0; g < gutters.size(); ++g) {
            const Gutter& gutter = gutters[g];
            if (line.bottom >= gutter.top || line.top <= gutter.bottom) continue;
            if (line.right < gutter.right)
                places[i].first |= std::uint64_t{1} << g;
            else if (line.left > gutter.left)
                places[i].second |= std::uint64_t{1} << g;
        }
    }
    auto distinct = places;
    distinct.emplace_back(0, 0);
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    for (std::size_t i = 0; i < lines.size(); ++i)
        columns[i] = static_cast<std::uint32_t>(std::lower_bound(distinct.begin(), distinct.end(), places[i]) -
                                                distinct.begin());
    if (evidence != nullptr) showRegions(lines, columns, *evidence);
    return columns;
}

} // namespace quillow::pdf
