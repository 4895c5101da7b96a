// Rectangles and sizes of windows and views.
#pragma once

namespace quillow {

/// In points.
struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// In points; the origin is the bottom left corner and y grows upwards.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace quillow
