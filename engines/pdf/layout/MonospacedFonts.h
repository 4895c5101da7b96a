// The fonts of a page in which all letters have one width: those of code.
#pragma once

#include "engines/pdf/content/Page.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace quillow::pdf {

class MonospacedFonts {
public:
    explicit MonospacedFonts(const Page& page);

    [[nodiscard]] bool contains(std::uint32_t font) const {
        return std::find(fonts_.begin(), fonts_.end(), font) != fonts_.end();
    }

private:
    std::vector<std::uint32_t> fonts_;
};

} // namespace quillow::pdf
