#include "engines/pdf/layout/Span.h"

#include "engines/pdf/layout/HiddenText.h"
#include "engines/pdf/layout/StackedRuns.h"

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
/// Sideways letters have it so far below their middle, on average.
constexpr float kMiddleOfLetters = 0.35F;
/// Matrices without an inverse make letters that have a width and no height. Layout divides by sizes. In points.
constexpr float kLeastSize = 0.001F;

bool isSameDirection(Point a, Point b) {
    return a.x * b.x + a.y * b.y > 0 && std::abs(a.x * b.y - a.y * b.x) < kSameDirection;
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
    /// A letter of a column, or a few side by side, become a run of vertical writing, with its origin above the middle.
    void addStacked(std::uint32_t index) {
        const Run& run = page_.runs[index];
        Run vertical = run;
        vertical.flags |= kVertical;
        vertical.direction = {0, -1};
        const StackedPlace place = stackedPlace(page_, run);
        Orientation& orientation = orientationOf(vertical);
        orientation.glyphCount += run.glyphCount;
        vertical.origin = {place.middle, place.top};
        Span span = emptySpan(orientation, vertical);
        span.run = index;
        span.firstGlyph = run.firstGlyph;
        span.glyphCount = run.glyphCount;
        span.left = span.start;
        span.right = span.start + place.top - place.bottom;
        span.start -= page_.glyphs[run.firstGlyph].offset;
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
        if (const GlyphScan scan = scanGlyphs(page_, run, start, span.size, wide); scan.isWhole) {
            span.firstGlyph = run.firstGlyph;
            span.glyphCount = run.glyphCount;
            span.left = start + page_.glyphs[run.firstGlyph].offset;
            span.right = scan.right;
            span.letters = scan.letters;
            orientation.spans.push_back(span);
            return;
        }
        const std::span glyphs = std::span(page_.glyphs).subspan(run.firstGlyph, run.glyphCount);
        std::size_t first = 0; // of the span
        float spanLeft = start + std::min(glyphs[0].offset, glyphs[0].offset + glyphs[0].width);
        float spanRight = spanLeft;
        const auto addSpan = [&span, &run, &orientation](std::size_t begin, std::size_t end, float left, float right) {
            span.firstGlyph = run.firstGlyph + static_cast<std::uint32_t>(begin);
            span.glyphCount = static_cast<std::uint32_t>(end - begin);
            span.left = left;
            span.right = right;
            orientation.spans.push_back(span);
        };
        for (std::size_t i = 0; i < glyphs.size(); ++i) {
            const float end = glyphs[i].offset + glyphs[i].width;
            const float left = start + std::min(glyphs[i].offset, end);
            const float right = start + std::max(glyphs[i].offset, end);
            if (left - spanRight > wide || spanLeft - right > wide) [[unlikely]] {
                if (i > 0) addSpan(first, i, spanLeft, spanRight);
                first = i;
                spanLeft = left;
                spanRight = right;
            }
            spanLeft = std::min(spanLeft, left);
            spanRight = std::max(spanRight, right);
        }
        addSpan(first, glyphs.size(), spanLeft, spanRight);
    }

    static Span emptySpan(const Orientation& orientation, const Run& run) {
        Span span;
        span.start = orientation.frame.alongOf(run.origin);
        span.baseline = orientation.frame.upOf(run.origin);
        span.size = std::max(run.fontSize, kLeastSize);
        const bool vertical = orientation.isVertical;
        if (vertical && (run.flags & kVertical) == 0) span.baseline += kMiddleOfLetters * run.fontSize; // sideways
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
