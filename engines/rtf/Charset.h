// How the bytes of a run are decoded: by a code page, as UTF-8 or by a symbol font. The UTF-8 of every single-byte
// character is computed in advance.
#pragma once

#include "text/CodePage.h"
#include "text/SymbolFonts.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace quillow::rtf {

class Charset {
public:
    /// The printable character of a single byte. `length` is 0 for controls, lead bytes and bytes without a character.
    struct Single {
        std::uint32_t utf8; ///< its UTF-8 with the first byte in the lowest bits
        std::uint8_t length;
    };

    /// A null page means UTF-8.
    explicit Charset(const text::CodePage* page);
    explicit Charset(text::SymbolFontDecoder decoder);

    [[nodiscard]] bool isUtf8() const { return page_ == nullptr && symbols_ == nullptr; }
    [[nodiscard]] bool isSymbolFont() const { return symbols_ != nullptr; }
    [[nodiscard]] text::SymbolFontDecoder symbols() const { return symbols_; }
    /// The code page if it is a double-byte one, else nullptr.
    [[nodiscard]] const text::CodePage* pairs() const {
        return page_ != nullptr && page_->isDoubleByte() ? page_ : nullptr;
    }

    /// The code point of a single byte; U+FFFD if it has none.
    [[nodiscard]] char32_t decodeByte(std::uint8_t byte) const;

    /// The code point of a sign that is written as U+F000 plus its byte (see text::isSymbolSign). In a charset without
    /// symbols it is the font "Symbol" that is meant.
    [[nodiscard]] char32_t decodeSign(char32_t sign) const {
        const text::SymbolFontDecoder decode = isSymbolFont() ? symbols_ : text::symbolToUnicode;
        return decode(static_cast<std::uint8_t>(sign & 0xFF));
    }

    /// The UTF-8 of a byte that is printable in this charset; length 0 for every other byte.
    [[nodiscard]] Single single(std::uint8_t byte) const { return {utf8_[byte], lengths_[byte]}; }

private:
    void prepareSingles();

    const text::CodePage* page_ = nullptr;
    text::SymbolFontDecoder symbols_ = nullptr;
    std::array<std::uint32_t, 256> utf8_{};
    std::array<std::uint8_t, 256> lengths_{};
};

/// The charsets of one document. Each is created once and keeps its address.
class CharsetPool {
public:
    /// The charset of a code page number: 65001 is UTF-8; 0, 1200 and unknown numbers are windows-1252.
    [[nodiscard]] const Charset* forCodePage(int number);
    [[nodiscard]] const Charset* forSymbols(text::SymbolFontDecoder symbols);

private:
    struct Entry {
        int codePage;
        std::unique_ptr<Charset> charset;
    };
    std::vector<Entry> entries_; // at most one for each code page and symbol font
};

} // namespace quillow::rtf
