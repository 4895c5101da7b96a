// Small fonts for tests, piece by piece.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillow::pdf::build {

/// Big-endian numbers.
[[nodiscard]] std::string number(std::uint64_t value, std::size_t size);
[[nodiscard]] inline std::string u8(std::uint64_t value) {
    return number(value, 1);
}
[[nodiscard]] inline std::string u16(std::uint64_t value) {
    return number(value, 2);
}
[[nodiscard]] inline std::string u32(std::uint64_t value) {
    return number(value, 4);
}
[[nodiscard]] std::string u16s(std::initializer_list<std::uint64_t> values);

// TrueType and OpenType.

struct Table {
    std::string_view tag;
    std::string bytes;
};
using Tables = std::vector<Table>;

[[nodiscard]] std::string trueType(const Tables& tables, std::string_view version = std::string_view("\0\1\0\0", 4),
                                   std::size_t fileOffset = 0);
[[nodiscard]] std::string collection(const std::vector<Tables>& fonts);

struct Subtable {
    std::uint16_t platform;
    std::uint16_t encoding;
    std::string bytes;
};
[[nodiscard]] std::string cmap(const std::vector<Subtable>& subtables);

/// Codes of one glyph or of consecutive ones.
struct CodeRange {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t glyph;
};
using CodeRanges = std::vector<CodeRange>;

/// Code to glyph for the codes from 0 on.
[[nodiscard]] std::string format0(std::string_view glyphs);
[[nodiscard]] std::string format4(const CodeRanges& ranges);
/// One range whose glyphs are in the array.
[[nodiscard]] std::string format4WithArray(std::uint32_t first, std::initializer_list<std::uint64_t> glyphs,
                                           std::uint16_t delta = 0);
[[nodiscard]] std::string format6(std::uint16_t first, std::initializer_list<std::uint64_t> glyphs);
[[nodiscard]] std::string format10(std::uint32_t first, std::initializer_list<std::uint64_t> glyphs);
/// 12 or 13.
[[nodiscard]] std::string format12(const CodeRanges& ranges, std::uint16_t format = 12);

[[nodiscard]] std::string head(std::uint16_t unitsPerEm);
[[nodiscard]] std::string maxp(std::uint16_t glyphCount);
[[nodiscard]] std::string hhea(int ascender, int descender, std::uint16_t metricCount);
[[nodiscard]] std::string hmtx(std::initializer_list<std::uint64_t> widths);
/// Version 2: places in the standard order, and the strings that continue it.
[[nodiscard]] std::string post2(std::initializer_list<std::uint64_t> places,
                                std::initializer_list<std::string_view> names);

// Compact Font Format.

[[nodiscard]] std::string cffIndex(const std::vector<std::string>& elements);
/// An integer of five bytes, so that a DICT's size does not depend on its values.
[[nodiscard]] std::string cffInteger(std::int64_t value);
/// A number of a charstring.
[[nodiscard]] std::string charstringNumber(int value);

struct Cff {
    std::vector<std::string> strings;
    std::vector<std::string> charStrings;
    std::string charset;  ///< its bytes; without them the predefined one with the number below
    std::string encoding; ///< likewise
    std::uint32_t predefinedCharset = 0;
    std::uint32_t predefinedEncoding = 0;
    std::string topDict; ///< further entries
    std::string privateDict;
    std::vector<std::string> subroutines;
    std::vector<std::string> globalSubroutines;
    bool isCidKeyed = false;
    std::vector<std::string> fontDicts; ///< entries of the parts of a CID-keyed font; each gets `privateDict`
    std::string fontDictSelect;
};
[[nodiscard]] std::string cff(const Cff& font);
/// Charstrings that only end.
[[nodiscard]] std::vector<std::string> emptyCharStrings(std::size_t count);

// Type 1.

struct Type1Glyph {
    std::string_view name;
    std::string charstring; ///< not encrypted
};

/// The dictionary Private with CharStrings. `randomBytes`: lenIV.
[[nodiscard]] std::string type1Private(const std::vector<Type1Glyph>& glyphs, int randomBytes = 4);
[[nodiscard]] std::string type1Encrypted(std::string_view plain);
[[nodiscard]] std::string hexadecimal(std::string_view bytes);
/// Clear text around an entry for the encoding.
[[nodiscard]] std::string type1Clear(std::string_view encoding);
[[nodiscard]] std::string type1(std::string_view encoding, const std::vector<Type1Glyph>& glyphs);
[[nodiscard]] std::string segment(char kind, std::string_view bytes);

} // namespace quillow::pdf::build
