#include "tests/engines/pdf/fonts/fontfiles/FontBuilders.h"

#include <array>

namespace quillow::pdf::build {
namespace {

std::string encrypted(std::string_view plain, std::uint16_t key) {
    std::string cipher;
    for (const char byte : plain) {
        const auto code = static_cast<std::uint8_t>(static_cast<std::uint8_t>(byte) ^ (key >> 8));
        key = static_cast<std::uint16_t>((code + key) * 52845U + 22719U);
        cipher.push_back(static_cast<char>(code));
    }
    return cipher;
}

std::string glyphArray(std::initializer_list<std::uint64_t> glyphs) {
    return u16s(glyphs);
}

} // namespace

std::string number(std::uint64_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t i = size; i-- > 0;)
        bytes.push_back(static_cast<char>(value >> (8 * i)));
    return bytes;
}

std::string u16s(std::initializer_list<std::uint64_t> values) {
    std::string bytes;
    for (const std::uint64_t value : values)
        bytes += u16(value);
    return bytes;
}

std::string trueType(const Tables& tables, std::string_view version, std::size_t fileOffset) {
    std::string directory = std::string(version) + u16(tables.size()) + std::string(6, '\0');
    std::size_t offset = fileOffset + directory.size() + 16 * tables.size();
    std::string data;
    for (const Table& table : tables) {
        directory += std::string(table.tag) + u32(0) + u32(offset + data.size()) + u32(table.bytes.size());
        data += table.bytes;
    }
    return directory + data;
}

std::string collection(const std::vector<Tables>& fonts) {
    const std::size_t header = 12 + 4 * fonts.size();
    std::string offsets;
    std::string data;
    for (const Tables& tables : fonts) {
        offsets += u32(header + data.size());
        data += trueType(tables, std::string_view("\0\1\0\0", 4), header + data.size());
    }
    return "ttcf" + u32(0x00010000) + u32(fonts.size()) + offsets + data;
}

std::string cmap(const std::vector<Subtable>& subtables) {
    std::string directory = u16(0) + u16(subtables.size());
    std::string data;
    for (const Subtable& subtable : subtables) {
        directory += u16(subtable.platform) + u16(subtable.encoding) + u32(4 + 8 * subtables.size() + data.size());
        data += subtable.bytes;
    }
    return directory + data;
}

std::string format0(std::string_view glyphs) {
    std::string array(256, '\0');
    array.replace(0, glyphs.size(), glyphs);
    return u16s({0, 262, 0}) + array;
}

std::string format4(const CodeRanges& ranges) {
    std::string ends;
    std::string starts;
    std::string deltas;
    for (const CodeRange& range : ranges) {
        ends += u16(range.last);
        starts += u16(range.first);
        deltas += u16(std::uint64_t{range.glyph} - range.first);
    }
    const std::string none(2 * ranges.size() + 2, '\0');
    const std::uint64_t count = ranges.size() + 1;
    return u16s({4, 16 + 8 * count, 0, 2 * count, 0, 0, 0}) + ends + u16(0xFFFF) + u16(0) + starts + u16(0xFFFF) +
           deltas + u16(1) + none;
}

std::string format4WithArray(std::uint32_t first, std::initializer_list<std::uint64_t> glyphs, std::uint16_t delta) {
    const std::uint64_t last = first + glyphs.size() - 1;
    return u16s({4, 32 + 2 * glyphs.size(), 0, 4, 0, 0, 0}) + u16s({last, 0xFFFF}) + u16(0) + u16s({first, 0xFFFF}) +
           u16s({delta, 1}) + u16s({4, 0}) + glyphArray(glyphs);
}

std::string format6(std::uint16_t first, std::initializer_list<std::uint64_t> glyphs) {
    return u16s({6, 10 + 2 * glyphs.size(), 0, first, glyphs.size()}) + glyphArray(glyphs);
}

std::string format10(std::uint32_t first, std::initializer_list<std::uint64_t> glyphs) {
    return u16s({10, 0}) + u32(20 + 2 * glyphs.size()) + u32(0) + u32(first) + u32(glyphs.size()) + glyphArray(glyphs);
}

std::string format12(const CodeRanges& ranges, std::uint16_t format) {
    std::string groups;
    for (const CodeRange& range : ranges)
        groups += u32(range.first) + u32(range.last) + u32(range.glyph);
    return u16s({format, 0}) + u32(16 + groups.size()) + u32(0) + u32(ranges.size()) + groups;
}

std::string head(std::uint16_t unitsPerEm) {
    return std::string(18, '\0') + u16(unitsPerEm) + std::string(34, '\0');
}

std::string maxp(std::uint16_t glyphCount) {
    return u32(0x00010000) + u16(glyphCount);
}

std::string hhea(int ascender, int descender, std::uint16_t metricCount) {
    return u32(0x00010000) + u16(static_cast<std::uint64_t>(ascender)) + u16(static_cast<std::uint64_t>(descender)) +
           std::string(26, '\0') + u16(metricCount);
}

std::string hmtx(std::initializer_list<std::uint64_t> widths) {
    std::string metrics;
    for (const std::uint64_t width : widths)
        metrics += u16s({width, 0});
    return metrics;
}

std::string post2(std::initializer_list<std::uint64_t> places, std::initializer_list<std::string_view> names) {
    std::string table = u32(0x00020000) + std::string(28, '\0') + u16(places.size()) + u16s(places);
    for (const std::string_view name : names)
        table += u8(name.size()) + std::string(name);
    return table;
}

std::string cffIndex(const std::vector<std::string>& elements) {
    if (elements.empty()) return u16(0);
    std::string offsets = u16(1);
    std::string data;
    for (const std::string& element : elements) {
        data += element;
        offsets += u16(data.size() + 1);
    }
    return u16(elements.size()) + u8(2) + offsets + data;
}

std::string cffInteger(std::int64_t value) {
    return '\x1D' + u32(static_cast<std::uint64_t>(value));
}

std::string charstringNumber(int value) {
    return '\x1C' + u16(static_cast<std::uint64_t>(value));
}

std::vector<std::string> emptyCharStrings(std::size_t count) {
    return std::vector<std::string>(count, "\x0E");
}

namespace {

/// The Top DICT is written twice: once for its size, once with the offsets.
struct CffOffsets {
    std::size_t charset = 0;
    std::size_t encoding = 0;
    std::size_t charStrings = 0;
    std::size_t privateDict = 0;
    std::size_t fontDicts = 0;
    std::size_t fontDictSelect = 0;
};

std::string entry(std::size_t value, std::string_view operation) {
    return cffInteger(static_cast<std::int64_t>(value)) + std::string(operation);
}

std::string privateDictOf(const Cff& font) {
    if (font.subroutines.empty()) return font.privateDict;
    // The offset of the subroutines is the size of the DICT.
    return font.privateDict + entry(font.privateDict.size() + 6, "\x13");
}

std::string topDictOf(const Cff& font, const CffOffsets& at) {
    std::string dict;
    if (font.isCidKeyed) {
        dict += cffInteger(391) + cffInteger(392) + cffInteger(0) + "\x0C\x1E";
        dict += entry(at.fontDicts, "\x0C\x24") + entry(at.fontDictSelect, "\x0C\x25");
    } else
        dict += entry(at.encoding, "\x10");
    dict += font.topDict + entry(at.charset, "\x0F") + entry(at.charStrings, "\x11");
    return dict + cffInteger(static_cast<std::int64_t>(privateDictOf(font).size())) + entry(at.privateDict, "\x12");
}

std::string beginningOf(const Cff& font, const CffOffsets& at) {
    return std::string("\1\0\4\2", 4) + cffIndex({"Name"}) + cffIndex({topDictOf(font, at)}) + cffIndex(font.strings) +
           cffIndex(font.globalSubroutines);
}

std::vector<std::string> fontDictsOf(const Cff& font, std::size_t privateDict) {
    std::vector<std::string> dicts;
    for (const std::string& dict : font.fontDicts)
        dicts.push_back(dict + cffInteger(static_cast<std::int64_t>(privateDictOf(font).size())) +
                        entry(privateDict, "\x12"));
    return dicts;
}

} // namespace

std::string cff(const Cff& font) {
    CffOffsets at;
    std::string data;
    const std::size_t start = beginningOf(font, at).size();
    const auto place = [&](const std::string& bytes) {
        const std::size_t offset = start + data.size();
        data += bytes;
        return offset;
    };
    at.charset = font.charset.empty() ? font.predefinedCharset : place(font.charset);
    at.encoding = font.encoding.empty() ? font.predefinedEncoding : place(font.encoding);
    at.charStrings = place(cffIndex(font.charStrings));
    at.privateDict = place(privateDictOf(font) + (font.subroutines.empty() ? "" : cffIndex(font.subroutines)));
    if (font.isCidKeyed) at.fontDicts = place(cffIndex(fontDictsOf(font, at.privateDict)));
    if (font.isCidKeyed) at.fontDictSelect = place(font.fontDictSelect);
    return beginningOf(font, at) + data;
}

std::string type1Private(const std::vector<Type1Glyph>& glyphs, int randomBytes) {
    std::string text = "dup /Private 8 dict dup begin /RD {string currentfile exch readstring pop} executeonly def\n";
    if (randomBytes != 4) text += "/lenIV " + std::to_string(randomBytes) + " def\n";
    text += "2 index /CharStrings " + std::to_string(glyphs.size()) + " dict dup begin\n";
    for (const Type1Glyph& glyph : glyphs) {
        std::string bytes = glyph.charstring;
        if (randomBytes >= 0) bytes = encrypted(std::string(static_cast<std::size_t>(randomBytes), 'x') + bytes, 4330);
        text += "/" + std::string(glyph.name) + " " + std::to_string(bytes.size()) + " RD " + bytes + " ND\n";
    }
    return text + "end end readonly put\n";
}

std::string type1Encrypted(std::string_view plain) {
    return encrypted("rand" + std::string(plain), 55665);
}

std::string hexadecimal(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string digits;
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        digits.push_back(kDigits[byte >> 4]);
        digits.push_back(kDigits[byte & 15]);
        if (digits.size() % 65 == 64) digits.push_back('\n');
    }
    return digits;
}

std::string type1Clear(std::string_view encoding) {
    return "%!PS-AdobeFont-1.0: Test\n11 dict begin\n/FontName /Test def\n" + std::string(encoding) +
           "\n/FontMatrix [0.001 0 0 0.001 0 0] readonly def\n/FontBBox {-10 -200 1000 800} readonly def\n"
           "currentdict end\ncurrentfile eexec\n";
}

std::string type1(std::string_view encoding, const std::vector<Type1Glyph>& glyphs) {
    return type1Clear(encoding) + type1Encrypted(type1Private(glyphs)) + "\n" + std::string(64, '0') +
           "\ncleartomark\n";
}

std::string segment(char kind, std::string_view bytes) {
    std::string header = {'\x80', kind};
    for (int shift = 0; shift < 32; shift += 8)
        header.push_back(static_cast<char>(bytes.size() >> shift));
    return header + std::string(bytes);
}

} // namespace quillow::pdf::build
