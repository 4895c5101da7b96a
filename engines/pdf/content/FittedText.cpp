#include "engines/pdf/content/FittedText.h"

#include <algorithm>
#include <cmath>

namespace quillow::pdf {

namespace {

/// Letters become at most so much smaller, however narrow they become: layout puts letters of different sizes in one
/// line as long as the larger ones are not over twice as large.
constexpr float kSmallestSize = 0.5F;
/// Directions that differ less from a right angle are upright. The sine of a degree.
constexpr float kUpright = 0.02F;

/// Moves and compresses places along one axis.
struct Fit {
    float from = 0;
    float to = 0;
    float scale = 1;

    [[nodiscard]] float place(float at) const { return to + (at - from) * scale; }
    [[nodiscard]] float size() const { return std::max(scale, kSmallestSize); }
};

Fit fitOf(float first, float last, float begin, float end) {
    const float scale = last > first ? std::min((end - begin) / (last - first), 1.0F) : 1.0F;
    // What is not too long is only moved.
    const float to = scale < 1 || first < begin ? begin : std::min(first, end - (last - first));
    return {first, to, scale};
}

bool isUpright(const Run& run) {
    return std::abs(run.direction.x) < kUpright || std::abs(run.direction.y) < kUpright;
}

Box boxOf(const Run& run, const Glyph& glyph) {
    const Point d = run.direction;
    const auto corner = [&](float along, float left) {
        return Point{run.origin.x + along * d.x - left * d.y, run.origin.y + along * d.y + left * d.x};
    };
    const Point start = corner(glyph.offset, run.ascent);
    Box box{start.x, start.y, start.x, start.y};
    box.extendTo(corner(glyph.offset + glyph.width, -run.descent));
    return box;
}

} // namespace

void fitRuns(Page& page, std::size_t firstRun, const Box& box) {
    bool isOutsideAcross = false;
    bool isOutsideDown = false;
    Box all{};
    for (std::size_t i = firstRun; i < page.runs.size(); ++i) {
        const Run& run = page.runs[i];
        if (!isUpright(run)) return;
        const Box bounds = boundsOf(page, run);
        if (i == firstRun) all = bounds;
        all.extendTo({bounds.left, bounds.bottom});
        all.extendTo({bounds.right, bounds.top});
        for (std::uint32_t g = run.firstGlyph; g < run.firstGlyph + run.glyphCount; ++g) {
            const Box glyph = boxOf(run, page.glyphs[g]);
            isOutsideAcross = isOutsideAcross || glyph.left > box.right || glyph.right < box.left;
            isOutsideDown = isOutsideDown || glyph.bottom > box.top || glyph.top < box.bottom;
        }
    }
    if (!isOutsideAcross && !isOutsideDown) return;

    const Fit across = isOutsideAcross ? fitOf(all.left, all.right, box.left, box.right) : Fit{};
    const Fit down = isOutsideDown ? fitOf(all.bottom, all.top, box.bottom, box.top) : Fit{};
    for (std::size_t i = firstRun; i < page.runs.size(); ++i) {
        Run& run = page.runs[i];
        const bool isAcross = std::abs(run.direction.y) < kUpright;
        const float alongScale = isAcross ? across.scale : down.scale;
        const float size = std::min(across.size(), down.size());
        run.origin = {across.place(run.origin.x), down.place(run.origin.y)};
        run.fontSize *= size;
        run.ascent *= size;
        run.descent *= size;
        for (std::uint32_t g = run.firstGlyph; g < run.firstGlyph + run.glyphCount; ++g) {
            page.glyphs[g].offset *= alongScale;
            page.glyphs[g].width *= alongScale;
        }
    }
}

} // namespace quillow::pdf
