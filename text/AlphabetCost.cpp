// The cost of a single-byte encoding: how improbable the pairs of letters in a sample are in a language.
#include "text/DetectorScores.h"
#include "text/EncodingTables.h"

#include <algorithm>
#include <array>

namespace quillow::text {

namespace {

using Cost = std::uint32_t;
constexpr Cost bitsCost(unsigned bits) {
    return bits * kStepsPerBit;
}

// Costs that are added to those of the letters' own probabilities. They are estimates; the detector's tests pass
// with wide margins around them.
constexpr Cost kForeignLetter = bitsCost(5);      ///< a letter that the language does not have
constexpr Cost kAsciiInOtherScript = bitsCost(4); ///< an ASCII letter in a text of another script: one of 26
constexpr Cost kPunctuation = bitsCost(5);        ///< typographic quotes, dashes, no-break spaces
constexpr Cost kSymbol = bitsCost(8);             ///< multiplication and plus-minus signs, exponents
constexpr Cost kRareSymbol = bitsCost(12);        ///< fractions, currency sign, box drawing
constexpr Cost kSymbolBesideLetter = bitsCost(5); ///< in addition to the symbol's own cost
constexpr Cost kOnWrongSide = bitsCost(8);        ///< an opening sign after a letter, an exponent before one
constexpr Cost kControl = bitsCost(20);           ///< C1 controls
constexpr Cost kUndefined = bitsCost(24);         ///< bytes that the encoding does not define
constexpr Cost kCapitalInsideWord = bitsCost(6);

/// The language models contain the Romanian letters with a cedilla, as most encodings do. ISO-8859-16 has them with a
/// comma below.
char16_t withCedilla(char16_t c) {
    if (c == 0x218 || c == 0x219) return static_cast<char16_t>(c - 0x218 + 0x15E);
    if (c == 0x21A || c == 0x21B) return static_cast<char16_t>(c - 0x21A + 0x162);
    return c;
}

/// The lower-case form of the letters that occur in single-byte encodings.
char16_t folded(char16_t c) {
    const auto plus = [c](int distance) { return static_cast<char16_t>(c + distance); };
    if (c < 0x80) return c >= 'A' && c <= 'Z' ? plus(0x20) : c;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return plus(0x20);
    if (c == 0x130) return 'i';
    if (c == 0x178) return 0xFF;
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return c % 2 == 1 ? plus(1) : c;
    if (c >= 0x100 && c <= 0x177 && c != 0x131 && c != 0x138) return c % 2 == 0 ? plus(1) : c;
    if (c == 0x1A0 || c == 0x1AF) return plus(1);
    if (c == 0x386) return 0x3AC;
    if (c >= 0x388 && c <= 0x38A) return plus(0x25);
    if (c == 0x38C) return 0x3CC;
    if (c == 0x38E || c == 0x38F) return plus(0x3F);
    if (c >= 0x391 && c <= 0x3AB) return plus(0x20);
    if (c >= 0x400 && c <= 0x40F) return plus(0x50);
    if (c >= 0x410 && c <= 0x42F) return plus(0x20);
    if (c == 0x490) return 0x491;
    return c;
}

bool isLetter(char16_t c) {
    if (c == 0xAA || c == 0xBA) return true;
    if (c < 0xC0 || c == 0xD7 || c == 0xF7) return false;
    if (c == 0x60C || c == 0x61B || c == 0x61F || c == 0x66A || c == 0xE3F) return false;
    return (c < 0x2000 && !(c >= 0x2B0 && c <= 0x2FF)) || (c >= 0x1E00 && c < 0x2000);
}

/// Signs that ordinary text has next to its words.
bool isPunctuation(char16_t c) {
    switch (c) {
    case 0xA0:
    case 0xA7:
    case 0xA9:
    case 0xAB:
    case 0xAD:
    case 0xAE:
    case 0xB0:
    case 0xB4:
    case 0xB7:
    case 0xBB:
    case 0x387:
    case 0x60C:
    case 0x61B:
    case 0x61F:
    case 0x2116:
    case 0x2122:
    case 0x20AC:
    case 0x20AA: return true;
    default: return (c >= 0x200C && c <= 0x201F) || (c >= 0x2022 && c <= 0x2027) || c == 0x2039 || c == 0x203A;
    }
}

/// Punctuation marks that only open, in every language.
bool isOpeningSign(char16_t c) {
    return c == 0xA1 || c == 0xBF || c == 0x201A || c == 0x201E;
}

bool isExponent(char16_t c) {
    return c == 0xB2 || c == 0xB3 || c == 0xB9;
}

bool isCommonSymbol(char16_t c) {
    return c == 0xD7 || c == 0xB1 || c == 0xB5 || c == 0xF7 || c == 0x2020 || c == 0x2021 || c == 0x2030;
}

enum class Case : std::uint8_t { none, lower, upper };

struct ByteMeaning {
    std::uint8_t letterClass = LanguageModel::kBoundary;
    Case letterCase = Case::none;
    Cost extra = 0;
    Cost afterLetter = 0;
    Cost beforeLetter = 0;

    [[nodiscard]] bool isLetter() const { return letterClass != LanguageModel::kBoundary; }
};

ByteMeaning meaningOfSign(char16_t c) {
    constexpr auto kBoundary = LanguageModel::kBoundary;
    if (isOpeningSign(c)) return {kBoundary, Case::none, kPunctuation, kOnWrongSide, 0};
    if (isPunctuation(c)) return {kBoundary, Case::none, kPunctuation, 0, 0};
    if (isExponent(c)) return {kBoundary, Case::none, kSymbol, 0, kOnWrongSide};
    return {kBoundary, Case::none, isCommonSymbol(c) ? kSymbol : kRareSymbol, kSymbolBesideLetter, kSymbolBesideLetter};
}

ByteMeaning meaningOf(char16_t c, const LanguageModel& model) {
    const char16_t lower = folded(c);
    const auto found = std::lower_bound(model.letters.begin(), model.letters.end(), lower);
    const bool asciiLetter = lower >= 'a' && lower <= 'z';
    if (found == model.letters.end() || *found != lower) {
        if (!asciiLetter && !isLetter(c)) return meaningOfSign(c);
        return {LanguageModel::kOtherLetter, lower == c ? Case::lower : Case::upper,
                asciiLetter ? kAsciiInOtherScript : kForeignLetter, 0, 0};
    }
    const auto place = static_cast<std::size_t>(found - model.letters.begin());
    return {static_cast<std::uint8_t>(place + LanguageModel::kFirstLetter), lower == c ? Case::lower : Case::upper, 0,
            0, 0};
}

ByteMeaning meaningOfByte(std::uint8_t byte, const std::uint16_t* index, const LanguageModel& model) {
    if (byte < 0x80) {
        const char16_t lower = folded(byte);
        return lower >= 'a' && lower <= 'z' ? meaningOf(char16_t{byte}, model) : ByteMeaning{};
    }
    const char16_t c = index[byte - 0x80];
    if (c == 0) return {LanguageModel::kBoundary, Case::none, kUndefined, 0, 0};
    if (c < 0xA0) return {LanguageModel::kBoundary, Case::none, kControl, 0, 0};
    return meaningOf(withCedilla(c), model);
}

} // namespace

std::uint64_t alphabetCost(const BytePairCounts& pairs, Encoding encoding, const LanguageModel& model) {
    std::array<ByteMeaning, 0x100> meanings;
    for (const std::uint8_t byte : pairs.bytes)
        meanings[byte] = meaningOfByte(byte, singleByteIndex(encoding), model);
    const std::size_t classes = model.classes();
    std::uint64_t cost = 0;
    for (const BytePairCounts::Entry& pair : pairs.entries) {
        const ByteMeaning& first = meanings[pair.first];
        const ByteMeaning& second = meanings[pair.second];
        Cost each = second.extra;
        if (first.isLetter() || second.isLetter()) each += model.bits[first.letterClass * classes + second.letterClass];
        if (first.isLetter()) each += second.afterLetter;
        if (second.isLetter()) each += first.beforeLetter;
        if (first.letterCase == Case::lower && second.letterCase == Case::upper) each += kCapitalInsideWord;
        cost += std::uint64_t{pair.count} * each;
    }
    return cost;
}

} // namespace quillow::text
