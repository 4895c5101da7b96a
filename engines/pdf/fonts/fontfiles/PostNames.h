// The table 'post': names of glyphs (OpenType 1.9, "post").
#pragma once

#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"
#include "engines/pdf/fonts/fontfiles/NameIndex.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// Versions 1, 2 and 2.5. Others have no names.
class PostNames {
public:
    explicit PostNames(std::string_view table);

    [[nodiscard]] std::string_view nameOf(GlyphIndex glyph) const;
    [[nodiscard]] GlyphIndex find(std::string_view name);

private:
    void readStrings(std::size_t start);
    [[nodiscard]] std::size_t placeInOrder(GlyphIndex glyph) const;

    std::string_view table_;
    std::uint32_t version_ = 0;
    std::uint32_t glyphCount_ = 0;
    std::vector<std::string_view> strings_; ///< those that the table has itself, after the standard ones
    std::optional<NameIndex> glyphs_;
};

} // namespace quillow::pdf
