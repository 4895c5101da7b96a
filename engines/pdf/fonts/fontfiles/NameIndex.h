// Glyphs by name.
#pragma once

#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// Longer names are no names of glyphs: those of a document have 127 bytes at most (ISO 32000-2, annex C.2).
inline constexpr std::size_t kLongestGlyphName = 127;

/// A name as a font has it. Empty if it is too long, or ".notdef", which is the name of the first glyph only: subsets
/// give it to all glyphs whose names they dropped.
[[nodiscard]] inline std::string_view soundGlyphName(std::string_view name) {
    return name.size() <= kLongestGlyphName && name != ".notdef" ? name : std::string_view();
}

class NameIndex {
public:
    /// `nameOf(glyph)` gives a glyph's name, or an empty one, of at most kLongestGlyphName bytes.
    template <class NameOf>
    NameIndex(std::uint32_t glyphCount, NameOf nameOf) {
        for (std::uint32_t glyph = 0; glyph < glyphCount; ++glyph) {
            const std::string_view name = nameOf(static_cast<GlyphIndex>(glyph));
            if (!name.empty()) entries_.push_back({name, static_cast<GlyphIndex>(glyph)});
        }
        std::sort(entries_.begin(), entries_.end());
    }

    /// The first glyph with this name, or 0.
    [[nodiscard]] GlyphIndex find(std::string_view name) const {
        const auto found = std::lower_bound(entries_.begin(), entries_.end(), Entry{name, 0});
        return found != entries_.end() && found->name == name ? found->glyph : GlyphIndex{0};
    }

private:
    struct Entry {
        std::string_view name;
        GlyphIndex glyph;
        auto operator<=>(const Entry&) const = default;
    };
    std::vector<Entry> entries_;
};

} // namespace quillow::pdf
