// The path that is being built, as far as text can depend on it (ISO 32000-2, 8.5): its horizontal and vertical lines
// and its upright rectangles. Everything else of it is forgotten at once, because drawings of a million lines are
// common.
#pragma once

#include "engines/pdf/content/Matrix.h"
#include "engines/pdf/content/Page.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace quillow::pdf {

/// Points by which a line may be off the horizontal or vertical.
inline constexpr float kSlant = 0.1F;
/// Points that a rule has at least: no ruling of a table and no underline is shorter, but parts of a curve are.
inline constexpr float kShortestRule = 3;
/// Rules of a page.
inline constexpr std::size_t kMaximumRules = 20'000;

class PathCollector {
public:
    void moveTo(const Matrix& toPage, double x, double y);
    /// A path that does not begin with a point begins where its first line ends.
    void lineTo(const Matrix& toPage, double x, double y);
    /// A curve. Where it ends is the next line's start.
    void curveTo(const Matrix& toPage, double x, double y);
    void rectangle(const Matrix& toPage, double x, double y, double width, double height);
    void close();

    enum class Painting { fill, stroke, both };
    /// The end of the path: adds what is drawn of it, and is inside the clipping box, to the page's rules.
    void paint(Painting painting, const Box& clip, Page& page);
    /// The end of a path that is not drawn.
    void clear();

    /// The path's rectangle if it is one and nothing else.
    [[nodiscard]] std::optional<Box> onlyRectangle();

private:
    void endSubpath();
    void addCorner(Point p);
    void addLine(Point to);
    void addRules(Painting painting, const Box& seen, Page& page) const;

    /// A subpath of lines is watched until it cannot be a rectangle any more.
    static constexpr std::size_t kCorners = 5;
    std::array<Point, kCorners> corners_{};
    std::size_t cornerCount_ = 0; ///< over kCorners: it is not a rectangle
    bool hasCurrent_ = false;
    Point start_;                 ///< of the subpath; valid if hasCurrent_
    Point current_;               ///< the same
    std::size_t subpaths_ = 0;    ///< that draw something
    std::vector<Box> lines_;      ///< straight ones that are long enough
    std::vector<Box> rectangles_; ///< by the operator re
    std::vector<Box> polygons_;   ///< rectangles of four lines, which are in lines_ too
};

} // namespace quillow::pdf
