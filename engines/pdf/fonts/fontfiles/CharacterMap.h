// One subtable of the table 'cmap': codes to glyphs (OpenType 1.9, "cmap").
#pragma once

#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// Formats 0, 2, 4, 6, 10, 12 and 13. Format 14 has variations of characters, which are no codes.
class CharacterMap {
public:
    /// Maps nothing.
    CharacterMap() = default;
    /// The bytes from the start of the subtable to the end of the table: its own length is often wrong.
    explicit CharacterMap(std::string_view bytes);

    [[nodiscard]] bool isEmpty() const { return segmentCount_ == 0; }
    [[nodiscard]] GlyphIndex glyphOf(std::uint32_t code) const;

    /// Calls `visit(glyph, code)` for every code with a glyph below `glyphCount`, in the order of codes. Of several
    /// codes that format 13 maps to one glyph it takes the first. Visits no code twice, whatever the bytes say.
    template <class Visit>
    void forEach(std::uint32_t glyphCount, Visit visit) const {
        std::uint32_t next = 0;
        for (std::size_t i = 0; i < segmentCount_ && next <= kLastCode; ++i) {
            const Segment segment = segmentAt(i);
            const std::uint32_t first = std::max(segment.first, next);
            const std::uint32_t end = endOfUse(segment, first, glyphCount);
            for (std::uint32_t code = first; code < end; ++code) {
                const GlyphIndex glyph = glyphIn(segment, code);
                if (glyph != 0 && glyph < glyphCount) visit(glyph, static_cast<char32_t>(code));
            }
            next = std::max(next, std::min(segment.last, kLastCode) + 1);
        }
    }

private:
    static constexpr std::uint32_t kLastCode = 0x10FFFF;

    /// Codes that one rule maps: an array of glyphs, or glyphs counted from a first one.
    struct Segment {
        std::uint32_t first = 1;
        std::uint32_t last = 0;
        std::uint32_t glyph = 0;       ///< the first glyph; with an array what is added to its elements
        std::uint32_t step = 0;        ///< from the glyph of one code to that of the next
        std::uint32_t elementSize = 0; ///< of the array; 0 without one
        std::size_t array = 0;         ///< its place in the subtable
    };

    [[nodiscard]] Segment segmentAt(std::size_t index) const;
    [[nodiscard]] Segment highByteSegment(std::size_t highByte) const;
    [[nodiscard]] Segment deltaSegment(std::size_t index) const;
    [[nodiscard]] Segment groupSegment(std::size_t index) const;
    [[nodiscard]] std::size_t indexOfSegment(std::uint32_t code) const;
    [[nodiscard]] GlyphIndex glyphIn(const Segment& segment, std::uint32_t code) const;
    [[nodiscard]] std::uint32_t endOfUse(const Segment& segment, std::uint32_t first, std::uint32_t glyphCount) const;
    [[nodiscard]] std::uint64_t numberAt(std::size_t offset, std::size_t size) const;

    std::string_view bytes_;
    std::uint16_t format_ = 0;
    std::size_t segmentCount_ = 0;
    std::size_t rowSize_ = 0; ///< of format 4: bytes from one of its arrays to the next
};

} // namespace quillow::pdf
