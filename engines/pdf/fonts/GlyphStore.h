// The glyphs of a font that were used so far, by their codes. None of them moves.
#pragma once

#include "engines/pdf/fonts/FontGlyph.h"

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillow::pdf {

class GlyphStore {
public:
    /// Null if the code was not used so far.
    [[nodiscard]] const FontGlyph* find(std::uint32_t code) const {
        if (code < kPageSize) return firstPage_[code];
        const std::uint32_t page = code / kPageSize;
        if (page >= pages_.size()) return findRare(code);
        return pages_[page] == nullptr ? nullptr : (*pages_[page])[code % kPageSize];
    }

    /// Keeps a glyph, with a copy of its text, for a code that has none so far.
    const FontGlyph& add(std::uint32_t code, const FontGlyph& glyph);

private:
    static constexpr std::uint32_t kPageSize = 256;
    static constexpr std::uint32_t kPages = 256; ///< codes of more than two bytes are rare
    using Page = std::array<const FontGlyph*, kPageSize>;
    struct Entry {
        FontGlyph glyph;
        char32_t character = 0;
    };

    [[nodiscard]] const FontGlyph* findRare(std::uint32_t code) const;
    void place(std::uint32_t code, const FontGlyph& glyph);

    Page firstPage_{};
    std::vector<std::unique_ptr<Page>> pages_; ///< empty until a code of two bytes is used
    std::unordered_map<std::uint32_t, const FontGlyph*> rare_;
    std::deque<Entry> entries_;
    std::deque<std::u32string> several_;
};

} // namespace quillow::pdf
