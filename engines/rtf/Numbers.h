// List numbers in words, letters and digits: the number formats of \levelnfc (RTF 1.9.1, "List Levels"). They are
// those of ISO 29500-1, 17.18.59, numbered as in MS-OSHARED 2.2.1.3. MS-DOCX 2.4 gives their characters.
#pragma once

#include <cstdint>
#include <string>

namespace quillow::rtf {

/// The parameter of \levelnfc, with RTF 1.9.1's names. A file may have any other number too.
enum class NumberFormat : std::int32_t {
    arabic = 0,                ///< 1, 2, 3
    upperRoman = 1,            ///< I, II, III
    lowerRoman = 2,            ///< i, ii, iii
    upperLetter = 3,           ///< A, B, C
    lowerLetter = 4,           ///< a, b, c
    ordinal = 5,               ///< 1st, 2nd, 3rd
    cardinalText = 6,          ///< One, Two, Three
    ordinalText = 7,           ///< First, Second, Third
    kanji1 = 10,               ///< Kanji numbering without the digit character (*dbnum1)
    kanji2 = 11,               ///< Kanji numbering with the digit character (*dbnum2)
    aiueo = 12,                ///< 46 phonetic katakana characters in "aiueo" order (*aiueo)
    iroha = 13,                ///< 46 phonetic katakana characters in "iroha" order (*iroha)
    doubleByte = 14,           ///< double-byte character
    kanji3 = 16,               ///< Kanji numbering 3 (*dbnum3)
    kanji4 = 17,               ///< Kanji numbering 4 (*dbnum4)
    circle = 18,               ///< circle numbering (*circlenum)
    doubleByteArabic = 19,     ///< double-byte Arabic numbering
    aiueoDoubleByte = 20,      ///< 46 phonetic double-byte katakana characters (*aiueo*dbchar)
    irohaDoubleByte = 21,      ///< 46 phonetic double-byte katakana characters (*iroha*dbchar)
    arabicLeadingZero = 22,    ///< 01, 02, 03
    bullet = 23,               ///< no number at all
    korean2 = 24,              ///< Korean numbering 2 (*ganada)
    korean1 = 25,              ///< Korean numbering 1 (*chosung)
    chinese1 = 26,             ///< Chinese numbering 1 (*gb1)
    chinese2 = 27,             ///< Chinese numbering 2 (*gb2)
    chinese3 = 28,             ///< Chinese numbering 3 (*gb3)
    chinese4 = 29,             ///< Chinese numbering 4 (*gb4)
    zodiac1 = 30,              ///< Chinese Zodiac numbering 1 (*zodiac1)
    zodiac2 = 31,              ///< Chinese Zodiac numbering 2 (*zodiac2)
    zodiac3 = 32,              ///< Chinese Zodiac numbering 3 (*zodiac3)
    taiwaneseDoubleByte1 = 33, ///< Taiwanese double-byte numbering 1
    taiwaneseDoubleByte2 = 34,
    taiwaneseDoubleByte3 = 35,
    taiwaneseDoubleByte4 = 36,
    chineseDoubleByte1 = 37, ///< Chinese double-byte numbering 1
    chineseDoubleByte2 = 38,
    chineseDoubleByte3 = 39,
    koreanDoubleByte1 = 41, ///< Korean double-byte numbering 1
    koreanDoubleByte2 = 42,
    koreanDoubleByte3 = 43,
    koreanDoubleByte4 = 44,
    hebrewNonStandard = 45, ///< Hebrew non-standard decimal
    arabicAlphabet = 46,    ///< Arabic Alif Ba Tah
    hebrewBiblical = 47,    ///< Hebrew Biblical standard
    arabicAbjad = 48,       ///< Arabic Abjad style
    hindiVowels = 49,
    hindiConsonants = 50,
    hindiNumbers = 51,
    thaiLetters = 53,
    thaiNumbers = 54,
    page = 57,         ///< page number format: - 1 -
    lowerRussian = 58, ///< lowercase Russian alphabet
    upperRussian = 59, ///< uppercase Russian alphabet
    none = 255,        ///< no number
};

/// Appends `value` in the number format `format`, at most kMaxNumberLength characters. Unknown formats, and values
/// that a format cannot write, are written in digits. NumberFormat::bullet and NumberFormat::none append nothing.
void appendNumber(std::u32string& out, NumberFormat format, std::uint32_t value);

inline constexpr std::size_t kMaxNumberLength = 64;

} // namespace quillow::rtf
