// A picture as a value.
#pragma once

#include <QByteArray>

namespace quillow {

/// Pixels row by row from the top, four bytes each: red, green, blue, alpha, not premultiplied. An image without
/// pixels is empty.
struct Image {
    int width = 0;
    int height = 0;
    QByteArray rgba; ///< width * height * 4 bytes
    [[nodiscard]] bool isEmpty() const { return rgba.isEmpty(); }
    friend bool operator==(const Image&, const Image&) = default;
};

} // namespace quillow
