#include "engines/pdf/layout/Span.h"

#include "engines/pdf/layout/HiddenText.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace quillow::pdf {

namespace {

/// Directions that differ by less are one: scanners and drawing programs turn text by fractions of a degree.
constexpr float kSameDirection = 0.02F; // radians, about a degree
/// A gap inside a run that is wider may separate columns. In ems; justified lines rarely reach it.
constexpr float kWideGap = 1.2F;
/// Letters reach so far above and below the baseline, in ems. The font's own ascent and descent often include leading.
constexpr float kLetterHeight = 0.7F;
constexpr float kLetterDepth = 0.2F;
/// In vertical writing the baseline is the middle of the glyphs.
constexpr float kHalfGlyph = 0.5F;

bool isSameDirection(Point a, Point b) {
    return a.x * b.x + a.y * b.y > 0 && std::abs(a.x * b.y - a.y * b.x) < kSameDirection;
}

/// Upright letters reach so far above their baseline in vertical writing. In ems.
constexpr float kAboveBaseline = 0.88F;
/// The letters of a column are below one another by about an em, in line.
constexpr float kLeastStep = 0.7F;
constexpr float kMostStep = 1.6F;
constexpr float kMostShift = 0.15F;
/// So many letters make a column; fewer may be a list of short items.
constexpr std::size_t kLeastColumn = 3;

/// Letters that are upright in vertical writing: ideographs, kana, Hangul, and their punctuation.
constexpr bool isIdeographic(char32_t c) {
    return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7FF) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE10 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFFEF) || (c >= 0x20000 && c <= 0x3FFFF);
}

bool isOneUprightLetter(const Page& page, const Run& run) {
    if (run.glyphCount != 1 || (run.flags & kVertical) != 0 || !(run.direction == Point{1, 0})) return false;
    const std::u32string_view text = page.textOf(run);
    return !text.empty() && isIdeographic(text.front());
}

/// Where the middle of a run of one letter is on its baseline.
Point middleOf(const Page& page, const Run& run) {
    const Glyph& glyph = page.glyphs[run.firstGlyph];
    return {run.origin.x + glyph.offset + glyph.width / 2, run.origin.y};
}

bool isBelow(const Page& page, const Run& above, const Run& below) {
    const Point a = middleOf(page, above);
    const Point b = middleOf(page, below);
    const float size = std::max(above.fontSize, below.fontSize);
    const float step = a.y - b.y;
    return std::abs(a.x - b.x) < kMostShift * size && step > kLeastStep * size && step < kMostStep * size;
}

/// Runs of one letter that follow one another downwards: vertical writing that is drawn letter by letter with a font
/// for horizontal writing.
std::vector<bool> stackedRuns(const Page& page) {
    std::vector<bool> stacked(page.runs.size());
    std::size_t i = 0;
    while (i < page.runs.size()) {
        if (!isOneUprightLetter(page, page.runs[i])) {
            ++i;
            continue;
        }
        std::size_t end = i + 1;
        while (end < page.runs.size() && isOneUprightLetter(page, page.runs[end]) &&
               isBelow(page, page.runs[end - 1], page.runs[end]))
            ++end;
        if (end - i >= kLeastColumn)
            for (std::size_t k = i; k < end; ++k)
                stacked[k] = true;
        i = end;
    }
    return stacked;
}

class SpanBuilder {
public:
    explicit SpanBuilder(const Page& page)
        : page_(page) {}

    std::vector<Orientation> build() && {
        const std::vector<bool> stacked = stackedRuns(page_);
        const std::vector<bool> repeated = repeatedHiddenRuns(page_);
        for (std::uint32_t index = 0; index < page_.runs.size(); ++index) {
            if (!repeated.empty() && repeated[index]) continue;
            if (stacked[index])
                addStacked(index);
            else
                addRun(index);
        }
        std::stable_sort(orientations_.begin(), orientations_.end(),
                         [](const Orientation& a, const Orientation& b) { return a.glyphCount > b.glyphCount; });
        return std::move(orientations_);
    }

private:
    /// A letter of a column becomes a run of vertical writing, with its origin above the middle of the letter.
    void addStacked(std::uint32_t index) {
        const Run& run = page_.runs[index];
        Run vertical = run;
        vertical.flags |= kVertical;
        vertical.direction = {0, -1};
        const Glyph& glyph = page_.glyphs[run.firstGlyph];
        Orientation& orientation = orientationOf(vertical);
        ++orientation.glyphCount;
        vertical.origin = {run.origin.x + glyph.offset + glyph.width / 2, run.origin.y + kAboveBaseline * run.fontSize};
        Span span = emptySpan(orientation, vertical);
        span.run = index;
        span.firstGlyph = run.firstGlyph;
        span.glyphCount = 1;
        span.left = span.start;
        span.right = span.start + run.fontSize;
        span.start -= glyph.offset;
        orientation.spans.push_back(span);
    }

    void addRun(std::uint32_t index) {
        const Run& run = page_.runs[index];
        if (run.glyphCount == 0) return;
        Orientation& orientation = orientationOf(run);
        orientation.glyphCount += run.glyphCount;
        Span span = emptySpan(orientation, run);
        span.run = index;
        const float start = span.start;
        const float wide = kWideGap * run.fontSize;
        const std::span glyphs = std::span(page_.glyphs).subspan(run.firstGlyph, run.glyphCount);
        std::size_t first = 0; // of the span
        float spanLeft = start + std::min(glyphs[0].offset, glyphs[0].offset + glyphs[0].width);
        float spanRight = spanLeft;
        const auto addSpan = [&](std::size_t end) {
            span.firstGlyph = run.firstGlyph + static_cast<std::uint32_t>(first);
            span.glyphCount = static_cast<std::uint32_t>(end - first);
            span.left = spanLeft;
            span.right = spanRight;
            orientation.spans.push_back(span);
        };
        for (std::size_t i = 0; i < glyphs.size(); ++i) {
            const float end = glyphs[i].offset + glyphs[i].width;
            const float left = start + std::min(glyphs[i].offset, end);
            const float right = start + std::max(glyphs[i].offset, end);
            if (left - spanRight > wide || spanLeft - right > wide) [[unlikely]] {
                if (i > 0) addSpan(i);
                first = i;
                spanLeft = left;
                spanRight = right;
            }
            spanLeft = std::min(spanLeft, left);
            spanRight = std::max(spanRight, right);
        }
        addSpan(glyphs.size());
    }

    static Span emptySpan(const Orientation& orientation, const Run& run) {
        Span span;
        span.start = orientation.frame.alongOf(run.origin);
        span.baseline = orientation.frame.upOf(run.origin);
        span.size = run.fontSize;
        const bool vertical = (run.flags & kVertical) != 0;
        span.top = span.baseline + (vertical ? kHalfGlyph : kLetterHeight) * run.fontSize;
        span.bottom = span.baseline - (vertical ? kHalfGlyph : kLetterDepth) * run.fontSize;
        return span;
    }

    Orientation& orientationOf(const Run& run) {
        if (last_ < orientations_.size() && holds(orientations_[last_], run)) return orientations_[last_];
        for (last_ = 0; last_ < orientations_.size(); ++last_)
            if (holds(orientations_[last_], run)) return orientations_[last_];
        Orientation orientation;
        orientation.frame.along = run.direction;
        orientation.isVertical = (run.flags & kVertical) != 0;
        if (orientations_.size() == kMostOrientations) return orientations_[last_ = kMostOrientations - 1];
        orientations_.push_back(std::move(orientation));
        return orientations_.back();
    }

    static bool holds(const Orientation& orientation, const Run& run) {
        return isSameDirection(orientation.frame.along, run.direction);
    }

    /// Text on a circle has as many directions as letters; the rest is read as if it had the last one.
    static constexpr std::size_t kMostOrientations = 64;

    const Page& page_;
    std::vector<Orientation> orientations_;
    std::size_t last_ = 0;
};

} // namespace

std::vector<Orientation> orientationsOf(const Page& page) {
    return SpanBuilder(page).build();
}

} // namespace quillow::pdf
