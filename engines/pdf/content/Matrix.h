// Transformation matrices (ISO 32000-2, 8.3.4).
#pragma once

namespace quillow::pdf {

struct Vector {
    double x = 0;
    double y = 0;
};

/// [a b c d e f] as content streams write it: (x, y) becomes (ax + cy + e, bx + dy + f).
struct Matrix {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    [[nodiscard]] Vector apply(double x, double y) const { return {a * x + c * y + e, b * x + d * y + f}; }

    /// Puts a translation before the matrix: its origin moves to (x, y) of its own space.
    void translate(double x, double y) {
        e += a * x + c * y;
        f += b * x + d * y;
    }
};

/// First `first`, then `then`.
[[nodiscard]] inline Matrix operator*(const Matrix& first, const Matrix& then) {
    return {first.a * then.a + first.b * then.c,          first.a * then.b + first.b * then.d,
            first.c * then.a + first.d * then.c,          first.c * then.b + first.d * then.d,
            first.e * then.a + first.f * then.c + then.e, first.e * then.b + first.f * then.d + then.f};
}

} // namespace quillow::pdf
