// The parameters of the graphics state that text depends on (ISO 32000-2, 8.4.1, 9.3).
#pragma once

#include "engines/pdf/content/Matrix.h"
#include "engines/pdf/content/Page.h"
#include "engines/pdf/fonts/Font.h"

#include <algorithm>
#include <limits>

namespace quillow::pdf {

/// Text rendering mode 3: neither filled nor outlined (9.3.6).
inline constexpr int kInvisibleMode = 3;

struct TextState {
    Font* font = nullptr; ///< null until a font is chosen: text is not shown then
    double size = 0;
    double characterSpacing = 0;
    double wordSpacing = 0;
    double scale = 1; ///< horizontal scaling, 1 for 100 %
    double leading = 0;
    double rise = 0;
    int mode = 0;
};

/// Contains every point.
inline constexpr Box kEverything{-std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                                 std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity()};

/// Empty boxes have a side of negative length.
[[nodiscard]] inline Box intersectionOf(const Box& a, const Box& b) {
    return {std::max(a.left, b.left), std::max(a.bottom, b.bottom), std::min(a.right, b.right), std::min(a.top, b.top)};
}

struct GraphicsState {
    Matrix toPage; ///< the current transformation matrix, down to the displayed page
    TextState text;
    Box clip = kEverything; ///< on the displayed page; contains the clipping path (8.5.4)
};

} // namespace quillow::pdf
