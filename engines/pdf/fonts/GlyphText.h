// The characters that one glyph shows, as a value.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// No glyph of any known font shows more characters. What a name or a map says beyond them is dropped.
inline constexpr std::size_t kMaxCharactersOfGlyph = 12;

/// Empty if the glyph shows nothing or if nobody knows what.
class GlyphText {
public:
    constexpr GlyphText() = default;
    constexpr explicit GlyphText(char32_t c)
        : characters_{c}
        , count_(1) {}

    constexpr void append(char32_t c) {
        if (count_ < kMaxCharactersOfGlyph) characters_[count_++] = c;
    }
    constexpr void append(std::u32string_view text) {
        for (const char32_t c : text)
            append(c);
    }
    constexpr void append(const GlyphText& other) { append(other.view()); }

    [[nodiscard]] constexpr bool isEmpty() const { return count_ == 0; }
    /// Valid as long as this value.
    [[nodiscard]] constexpr std::u32string_view view() const { return {characters_.data(), count_}; }
    [[nodiscard]] constexpr const char32_t* begin() const { return characters_.data(); }
    [[nodiscard]] constexpr const char32_t* end() const { return characters_.data() + count_; }

private:
    std::array<char32_t, kMaxCharactersOfGlyph> characters_{};
    std::uint8_t count_ = 0;
};

} // namespace quillow::pdf
