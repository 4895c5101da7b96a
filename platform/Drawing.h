// Port: the drawing context that a view draws into. The initial colour is black.
#pragma once

#include "base/Rect.h"

#include <vector>

namespace quillow {

enum class DrawingColor { black, white, gray };

/// Lengths are in points, whatever the scale of the screen.
struct Stroke {
    double lineWidth = 1.0;
    std::vector<double> dash; ///< lengths on and off in turn; empty for an unbroken line
    double phase = 0.0;       ///< the offset in the pattern at which the path starts
    friend bool operator==(const Stroke&, const Stroke&) = default;
};

class Drawing {
public:
    virtual ~Drawing() = default;

    /// Sets the current colour. Themes, dark ones included, do not change it.
    virtual void setColor(DrawingColor color) = 0;
    virtual void fillRect(const Rect& rect) = 0;
    /// Strokes with the current colour; the middle of the line runs along the rectangle's edge.
    virtual void strokeRect(const Rect& rect, const Stroke& stroke) = 0;
    virtual void strokeRoundedRect(const Rect& rect, double xRadius, double yRadius, const Stroke& stroke) = 0;
};

} // namespace quillow
