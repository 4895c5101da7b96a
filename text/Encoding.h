// The Encoding Standard (encoding.spec.whatwg.org): labels, byte-order marks and decoders, with tables generated at
// development time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillow::text {

/// The encodings of the standard, section 4.2, in its order.
enum class Encoding : std::uint8_t {
    utf8,
    ibm866,
    iso8859_2,
    iso8859_3,
    iso8859_4,
    iso8859_5,
    iso8859_6,
    iso8859_7,
    iso8859_8,
    iso8859_8i,
    iso8859_10,
    iso8859_13,
    iso8859_14,
    iso8859_15,
    iso8859_16,
    koi8R,
    koi8U,
    macintosh,
    windows874,
    windows1250,
    windows1251,
    windows1252,
    windows1253,
    windows1254,
    windows1255,
    windows1256,
    windows1257,
    windows1258,
    xMacCyrillic,
    gbk,
    gb18030,
    big5,
    eucJp,
    iso2022Jp,
    shiftJis,
    eucKr,
    replacement,
    utf16be,
    utf16le,
    xUserDefined,
};

/// Section 4.2, "get an encoding". ASCII white space around the label and its letter case do not matter.
/// std::nullopt if no encoding has the label.
[[nodiscard]] std::optional<Encoding> encodingForLabel(std::string_view label);

/// The standard's name, such as "UTF-8", "windows-1252" or "Shift_JIS".
[[nodiscard]] std::string_view encodingName(Encoding encoding);

struct ByteOrderMark {
    Encoding encoding;
    std::size_t length;
};
/// Section 6, "BOM sniff".
[[nodiscard]] std::optional<ByteOrderMark> byteOrderMark(std::string_view bytes);

struct DecodedText {
    std::string utf8;               ///< always well-formed
    std::uint64_t replacements = 0; ///< how many U+FFFD were written for bytes that the encoding has no character for
};
/// Decodes the whole input with the standard's decoder in replacement mode. Does not look for a byte-order mark:
/// the caller removes it.
[[nodiscard]] DecodedText decode(std::string_view bytes, Encoding encoding);

} // namespace quillow::text
