// The beginning of a Type 2 charstring: does it name the glyph's width (Technical Note 5177, 3.1 and 4)?
#pragma once

#include "engines/pdf/fonts/fontfiles/CffIndex.h"

#include <cstdint>
#include <string_view>

namespace quillow::pdf {

struct CharstringWidth {
    enum class Kind : std::uint8_t {
        unknown,   ///< the charstring is damaged, or computes before it draws
        usual,     ///< the glyph has the default width
        difference ///< the glyph differs from the nominal width
    };
    Kind kind = Kind::unknown;
    double difference = 0;
};

[[nodiscard]] CharstringWidth widthOfCharstring(std::string_view charstring, const CffIndex& globalSubroutines,
                                                const CffIndex& subroutines);

} // namespace quillow::pdf
