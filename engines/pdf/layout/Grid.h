// Grids of ruling lines: the cells that a page draws.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// A ruling line, or the edge of a rectangle, in the frame of an orientation.
struct Ruling {
    float at = 0; ///< how high it is, or how far along
    float from = 0;
    float to = 0;
};

struct Rulings {
    std::vector<Ruling> horizontal;
    std::vector<Ruling> vertical;
};

/// Makes rulings one that lie on one another or go on where another ends. Sorts by place.
void joinRulings(std::vector<Ruling>& rulings);

/// Horizontal and vertical rulings that touch one another. Fields are counted by rows from the top, then from the left.
/// Fields without a ruling between them are one cell.
class Grid {
public:
    static constexpr std::uint32_t kOutside = 0xFFFFFFFF;

    /// `xs` from left to right, `ys` from top to bottom.
    Grid(std::vector<float> xs, std::vector<float> ys, std::vector<Ruling> horizontal, std::vector<Ruling> vertical);

    /// The grid with more vertical rulings.
    [[nodiscard]] Grid with(std::span<const Ruling> vertical) const;

    [[nodiscard]] std::size_t columns() const { return xs_.size() - 1; }
    /// How many cells are large enough for text.
    [[nodiscard]] std::size_t cellCount() const;
    /// The column of fields at a place.
    [[nodiscard]] std::uint32_t columnAt(float x) const;
    /// The row of fields at a height.
    [[nodiscard]] std::uint32_t rowAt(float y) const;
    [[nodiscard]] std::size_t rows() const { return ys_.size() - 1; }
    [[nodiscard]] float leftOf(std::size_t column) const { return xs_[column]; }
    [[nodiscard]] float topOf(std::size_t row) const { return ys_[row]; }
    [[nodiscard]] float bottomOf(std::size_t row) const { return ys_[row + 1]; }
    /// Whether a field and the one to its left are one cell.
    [[nodiscard]] bool isOpen(std::size_t row, std::size_t column) const {
        return cells_[row * columns() + column] == cells_[row * columns() + column - 1];
    }
    /// The only column of a field's cell, or kOutside if the cell reaches over several.
    [[nodiscard]] std::uint32_t onlyColumnOf(std::size_t row, std::size_t column) const;
    [[nodiscard]] float left() const { return xs_.front(); }
    [[nodiscard]] float right() const { return xs_.back(); }
    [[nodiscard]] float top() const { return ys_.front(); }
    [[nodiscard]] float bottom() const { return ys_.back(); }
    /// Whether a box is in one cell and does not reach its left and right edges: the background of text.
    [[nodiscard]] bool isBackground(float left, float right, float bottom, float top) const;
    /// The first field of the cell at a place.
    [[nodiscard]] std::uint32_t cellAt(float x, float y) const;

private:
    [[nodiscard]] std::uint32_t rootOf(std::uint32_t field);
    void join(std::uint32_t a, std::uint32_t b);

    std::vector<float> xs_;
    std::vector<float> ys_;
    std::vector<Ruling> horizontal_;
    std::vector<Ruling> vertical_;
    std::vector<std::uint32_t> cells_; ///< the first field of each field's cell
};

/// The grids of a page with at least two rows; some have one column. The rulings are joined.
[[nodiscard]] std::vector<Grid> gridsOf(const Rulings& rulings);

} // namespace quillow::pdf
