#include "engines/pdf/content/TextFrame.h"

#include <cmath>

namespace quillow::pdf {

namespace {

/// Shares by which the directions and sizes of two pieces of one run may differ. Producers write matrices with four to
/// six digits.
constexpr double kDirectionTolerance = 1e-3;
constexpr double kSizeTolerance = 2e-3;

bool isClose(double a, double b) {
    return std::abs(a - b) <= kSizeTolerance * std::abs(b);
}

double lengthOf(Vector v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}

Vector scaled(Vector v, double factor) {
    return {v.x * factor, v.y * factor};
}

/// Positive if `b` is to the left of `a`.
double cross(Vector a, Vector b) {
    return a.x * b.y - a.y * b.x;
}

TextFrame horizontalFrame(const TextState& text, Vector right, Vector up) {
    TextFrame frame;
    const double length = lengthOf(right);
    const double sign = text.size * text.scale < 0 ? -1 : 1;
    if (length > 0) {
        frame.direction = scaled(right, sign / length);
        frame.toText = sign / length;
    }
    frame.advance = std::abs(text.size * text.scale) * length;
    frame.adjustment = -frame.advance / 1000;
    frame.spacing = sign * length * text.scale;
    // The height of an em above the baseline, also of slanted text; negative in mirrored text.
    const double height = cross(frame.direction, up) * text.size;
    frame.fontSize = std::abs(height);
    frame.ascent = frame.fontSize * (height < 0 ? text.font->descent() : text.font->ascent());
    frame.descent = frame.fontSize * (height < 0 ? text.font->ascent() : text.font->descent());
    return frame;
}

/// Glyphs follow one another against the y axis of the text space, and each has its middle on the line (9.7.4.3).
TextFrame verticalFrame(const TextState& text, Vector right, Vector up) {
    TextFrame frame;
    frame.isVertical = true;
    const double length = lengthOf(up);
    const double sign = text.size < 0 ? -1 : 1;
    frame.direction = length > 0 ? scaled(up, -sign / length) : Vector{0, -1};
    frame.toText = length > 0 ? -sign / length : 0;
    frame.advance = -std::abs(text.size) * length;
    frame.adjustment = std::abs(text.size) * length / 1000;
    frame.spacing = -sign * length;
    frame.fontSize = std::abs(text.size) * length;
    frame.ascent = frame.descent = std::abs(cross(frame.direction, right) * text.size * text.scale) / 2;
    return frame;
}

} // namespace

bool TextFrame::continues(const TextFrame& other) const {
    return std::abs(direction.x - other.direction.x) <= kDirectionTolerance &&
           std::abs(direction.y - other.direction.y) <= kDirectionTolerance && isClose(advance, other.advance) &&
           isClose(fontSize, other.fontSize) && isVertical == other.isVertical;
}

TextFrame frameOf(const TextState& text, const Matrix& textToPage) {
    const Vector right{textToPage.a, textToPage.b};
    const Vector up{textToPage.c, textToPage.d};
    return text.font->isVertical() ? verticalFrame(text, right, up) : horizontalFrame(text, right, up);
}

} // namespace quillow::pdf
