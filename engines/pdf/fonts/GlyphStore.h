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
    GlyphStore() { pages_[0] = &firstPage_; }
    GlyphStore(const GlyphStore&) = delete;
    GlyphStore& operator=(const GlyphStore&) = delete;

    /// Null if the code was not used so far.
    [[nodiscard]] const FontGlyph* find(std::uint32_t code) const {
        return code < kPageSize * kPages ? findPair(code) : findRare(code);
    }
    /// The same for codes of one byte and for those of two.
    [[nodiscard]] const FontGlyph* findByte(std::uint32_t code) const { return firstPage_[code]; }
    [[nodiscard]] const FontGlyph* findPair(std::uint32_t code) const {
        const Page* const page = pages_[code / kPageSize];
        return page == nullptr ? nullptr : (*page)[code % kPageSize];
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
    std::array<Page*, kPages> pages_{};
    std::vector<std::unique_ptr<Page>> otherPages_;
    std::unordered_map<std::uint32_t, const FontGlyph*> rare_;
    std::deque<Entry> entries_;
    std::deque<std::u32string> several_;
};

} // namespace quillow::pdf
