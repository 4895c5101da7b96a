#include "engines/pdf/structure/RunningArtifacts.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace quillow::pdf {

namespace {

/// Letters reach so far above and below the baseline, in ems.
constexpr float kLetterHeight = 0.7F;
constexpr float kLetterDepth = 0.2F;
/// Directions that differ by less are one, in radians.
constexpr float kSameDirection = 0.02F;
/// The numbers of a column of line numbers begin or end so near one another, in points.
constexpr float kSameEdge = 1;

/// A run in a frame where text goes to the right.
struct Extent {
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
};

Extent extentOf(const Page& page, const Run& run, Point along) {
    const Glyph& last = page.glyphs[run.firstGlyph + run.glyphCount - 1];
    const float left = run.origin.x * along.x + run.origin.y * along.y;
    const float up = run.origin.y * along.x - run.origin.x * along.y;
    return {left, left + last.offset + last.width, up - kLetterDepth * run.fontSize, up + kLetterHeight * run.fontSize};
}

bool isSameDirection(Point a, Point b) {
    return a.x * b.x + a.y * b.y > 0 && std::abs(a.x * b.y - a.y * b.x) < kSameDirection;
}

bool isBlank(const Page& page, const Run& run) {
    return page.textOf(run).find_first_not_of(U" \t\u00A0") == std::u32string_view::npos;
}

bool isRunning(const Run& run) {
    return (run.flags & kRunning) != 0 && (run.flags & kFromAnnotation) == 0;
}

/// The edges of artifacts that stay.
class Edges {
public:
    void add(const Extent& extent) {
        lefts_.push_back(extent.left);
        rights_.push_back(extent.right);
    }
    void sort() {
        std::sort(lefts_.begin(), lefts_.end());
        std::sort(rights_.begin(), rights_.end());
    }
    [[nodiscard]] bool have(const Extent& extent) const {
        return hasNear(lefts_, extent.left) || hasNear(rights_, extent.right);
    }

private:
    static bool hasNear(const std::vector<float>& edges, float edge) {
        const auto next = std::lower_bound(edges.begin(), edges.end(), edge - kSameEdge);
        return next != edges.end() && *next <= edge + kSameEdge;
    }

    std::vector<float> lefts_;
    std::vector<float> rights_;
};

} // namespace

bool isTagged(Document& document) {
    const Dictionary marks = document.get(document.catalog(), "MarkInfo").dictionary();
    return document.get(marks, "Marked").booleanOr(false);
}

void dropRunningArtifacts(Page& page) {
    if (std::none_of(page.runs.begin(), page.runs.end(), isRunning)) return;
    const auto isText = [&page](const Run& run) { return !isRunning(run) && !isBlank(page, run); };
    const auto text = std::find_if(page.runs.begin(), page.runs.end(), isText);
    if (text == page.runs.end()) return;
    const Point along = text->direction;
    float bottom = std::numeric_limits<float>::infinity();
    float top = -bottom;
    for (const Run& run : page.runs) {
        if (!isText(run)) continue;
        const Extent extent = extentOf(page, run, along);
        bottom = std::min(bottom, extent.bottom);
        top = std::max(top, extent.top);
    }
    const auto isBeside = [&](const Extent& extent) { return extent.top > bottom && extent.bottom < top; };
    Edges edges;
    for (const Run& run : page.runs)
        if (const Extent extent = extentOf(page, run, along); isRunning(run) && isBeside(extent)) edges.add(extent);
    edges.sort();
    std::erase_if(page.runs, [&](const Run& run) {
        if (!isRunning(run) || !isSameDirection(run.direction, along)) return false;
        const Extent extent = extentOf(page, run, along);
        return !isBeside(extent) && !edges.have(extent);
    });
}

} // namespace quillow::pdf
