// The legacy code pages of Windows, DOS and Macintosh, by the numbers that RTF uses. The tables are generated;
// nothing is loaded at run time.
#pragma once

#include <cstdint>

namespace quillow::text {

struct PairTable;

/// Numbers of code pages that formats name in other ways than by their number.
inline constexpr int kDosUnitedStates = 437;
inline constexpr int kDosLatin = 850;
inline constexpr int kWindowsLatin = 1252;
inline constexpr int kMacRoman = 10000;
inline constexpr int kUtf8CodePage = 65001; ///< there is no CodePage of this number

/// One single- or double-byte code page. Objects are static and immutable.
class CodePage {
public:
    /// The code page with this number (437, 850, 874, 932, 936, 949, 950, 1250..1258, 1361, 10000.., 28591..,
    /// 20866, ...), or nullptr if there is no table for it. There is none for 65001 and 1200: the caller
    /// decodes Unicode itself.
    [[nodiscard]] static const CodePage* forNumber(int number);

    [[nodiscard]] int number() const { return number_; }
    [[nodiscard]] bool isDoubleByte() const { return pairs_ != nullptr; }

    /// True when `byte` begins a pair in this code page.
    [[nodiscard]] bool isLeadByte(std::uint8_t byte) const { return pairs_ != nullptr && singles_[byte] == kLead; }

    /// The code point of a single byte, or U+FFFD if the code page has none. A lead byte alone has none.
    [[nodiscard]] char32_t decodeByte(std::uint8_t byte) const {
        return singles_[byte] == kLead ? char32_t{0xFFFD} : char32_t{singles_[byte]};
    }

    /// The code point of a pair, or U+FFFD if the code page has none.
    [[nodiscard]] char32_t decodePair(std::uint8_t lead, std::uint8_t trail) const;

    /// Marks a lead byte in the table of single bytes. It is a noncharacter, so no code page maps to it.
    static constexpr std::uint16_t kLead = 0xFFFF;

    constexpr CodePage(int number, const std::uint16_t* singles, const PairTable* pairs)
        : number_(number)
        , singles_(singles)
        , pairs_(pairs) {}

private:
    int number_;
    const std::uint16_t* singles_; ///< 256 entries
    const PairTable* pairs_;       ///< nullptr for a single-byte code page
};

} // namespace quillow::text
