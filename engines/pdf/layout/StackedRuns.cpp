#include "engines/pdf/layout/StackedRuns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillow::pdf {

namespace {

/// Upright letters reach so far above their baseline in vertical writing. In ems.
constexpr float kAboveBaseline = 0.88F;
/// Sideways letters are so far beside their baseline, on average. In ems.
constexpr float kMiddleOfLetters = 0.35F;
/// The parts of a column are below one another with a gap of at most so much, and overlap by at most so much. In ems.
constexpr float kMostGap = 0.6F;
constexpr float kMostOverlap = 0.3F;
/// Upright letters are in line; sideways ones and digits may be beside their middle. In ems.
constexpr float kMostShift = 0.15F;
constexpr float kMostShiftOfOthers = 0.3F;
/// So many letters make a column; fewer may be a list of short items.
constexpr std::size_t kLeastColumn = 3;
/// Horizontal digits or letters in a column have together about the width of an ideograph.
constexpr std::size_t kMostSideBySide = 4;
constexpr float kMostWidth = 1.3F;

/// Letters that are upright in vertical writing: ideographs, kana, Hangul, and their punctuation.
constexpr bool isUpright(char32_t c) {
    return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7FF) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE10 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFFEF) || (c >= 0x20000 && c <= 0x3FFFF);
}

enum class Kind : std::uint8_t {
    other,
    upright,    ///< one ideograph
    sideBySide, ///< horizontal digits or letters
    sideways,   ///< text that is turned to the right
    vertical,   ///< writing mode 1
};

float widthOf(const Page& page, const Run& run) {
    const Glyph& first = page.glyphs[run.firstGlyph];
    const Glyph& last = page.glyphs[run.firstGlyph + run.glyphCount - 1];
    return last.offset + last.width - first.offset;
}

Kind kindOf(const Page& page, const Run& run) {
    if (run.glyphCount == 0) return Kind::other;
    if (run.direction == Point{0, -1}) return (run.flags & kVertical) != 0 ? Kind::vertical : Kind::sideways;
    if (!(run.direction == Point{1, 0}) || (run.flags & kVertical) != 0 || run.glyphCount > kMostSideBySide)
        return Kind::other;
    const std::u32string_view text = page.textOf(run);
    if (text.empty()) return Kind::other;
    if (run.glyphCount == 1 && isUpright(text.front())) return Kind::upright;
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char32_t c) { return c > ' ' && c < 0x7F; });
    return isPlain && widthOf(page, run) <= kMostWidth * run.fontSize ? Kind::sideBySide : Kind::other;
}

/// The place of a run of any kind but `other`.
StackedPlace placeOf(const Page& page, const Run& run, Kind kind) {
    if (kind == Kind::upright || kind == Kind::sideBySide) return stackedPlace(page, run);
    const Glyph& first = page.glyphs[run.firstGlyph];
    const float middle = run.origin.x + (kind == Kind::sideways ? kMiddleOfLetters * run.fontSize : 0);
    const float top = run.origin.y - first.offset;
    return {middle, top, top - widthOf(page, run)};
}

class ColumnFinder {
public:
    explicit ColumnFinder(const Page& page)
        : page_(page)
        , stacked_(page.runs.size()) {}

    std::vector<bool> find() && {
        for (std::size_t i = 0; i < page_.runs.size(); ++i)
            add(i);
        end(page_.runs.size());
        return std::move(stacked_);
    }

private:
    void add(std::size_t index) {
        const Run& run = page_.runs[index];
        const Kind kind = kindOf(page_, run);
        const StackedPlace place = kind == Kind::other ? StackedPlace{} : placeOf(page_, run, kind);
        if (kind == Kind::other || !goesOn(index, kind, place)) {
            end(index);
            begin_ = index;
            ideographs_ = letters_ = 0;
            hasVertical_ = hasSideways_ = false;
        }
        last_ = place;
        lastKind_ = kind;
        letters_ += run.glyphCount;
        ideographs_ += kind == Kind::upright ? 1 : 0;
        hasVertical_ = hasVertical_ || kind == Kind::vertical;
        hasSideways_ = hasSideways_ || kind == Kind::sideways;
    }

    [[nodiscard]] bool goesOn(std::size_t index, Kind kind, StackedPlace place) const {
        if (index == 0 || lastKind_ == Kind::other) return false;
        const float size = std::max(page_.runs[index - 1].fontSize, page_.runs[index].fontSize);
        const bool bothUpright = kind == Kind::upright && lastKind_ == Kind::upright;
        const float shift = (bothUpright ? kMostShift : kMostShiftOfOthers) * size;
        const float gap = last_.bottom - place.top;
        return std::abs(place.middle - last_.middle) < shift && gap < kMostGap * size && gap > -kMostOverlap * size;
    }

    /// Marks the letters of the column that ends before `index`.
    void end(std::size_t index) {
        const bool isMixed = hasSideways_ && ideographs_ > 0 && letters_ >= kLeastColumn;
        const bool isColumn = hasVertical_ || isMixed || ideographs_ >= kLeastColumn;
        if (!isColumn || index - begin_ < 2) return;
        for (std::size_t i = begin_; i < index; ++i) {
            const Kind kind = kindOf(page_, page_.runs[i]);
            stacked_[i] = kind == Kind::upright || kind == Kind::sideBySide;
        }
    }

    const Page& page_;
    std::vector<bool> stacked_;
    std::size_t begin_ = 0; ///< of the column
    std::size_t letters_ = 0;
    std::size_t ideographs_ = 0; ///< upright ones
    bool hasVertical_ = false;
    bool hasSideways_ = false;
    StackedPlace last_; ///< of the run before
    Kind lastKind_ = Kind::other;
};

} // namespace

StackedPlace stackedPlace(const Page& page, const Run& run) {
    const float left = run.origin.x + page.glyphs[run.firstGlyph].offset;
    const float top = run.origin.y + kAboveBaseline * run.fontSize;
    return {left + widthOf(page, run) / 2, top, top - std::max(run.fontSize, widthOf(page, run))};
}

std::vector<bool> stackedRuns(const Page& page) {
    return ColumnFinder(page).find();
}

} // namespace quillow::pdf
