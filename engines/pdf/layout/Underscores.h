// Underscores that are drawn as lines, as TeX does in fonts that have none.
#pragma once

#include "engines/pdf/layout/Span.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quillow::pdf {

/// The short rulings of a page that may be underscores of one orientation.
class Underscores {
public:
    Underscores(const Page& page, const Frame& frame);

    /// Chooses those at the baseline of a line with the spans `line`. `append` writes what is chosen.
    void choose(const Orientation& orientation, std::span<const std::uint32_t> line);

    [[nodiscard]] bool areChosen() const { return !chosen_.empty(); }

    /// Appends the underscores that are in a gap between two letters of that size, and nothing else but blanks that
    /// are beside them. Returns whether there are any.
    [[nodiscard]] bool append(float left, float right, float size, std::u32string& out) const;

private:
    struct Ruling {
        float y = 0;
        float left = 0;
        float right = 0;
    };

    std::vector<Ruling> rulings_; ///< sorted by their height on the page, then from left to right
    std::vector<Ruling> chosen_;  ///< from left to right
};

} // namespace quillow::pdf
