// How vowels and consonants, with accents and without, follow one another in the languages that are written in Latin
// letters, and how common each letter is among those of its kind: the averages of the texts that the other models are
// made of.
#include "text/UnknownLatinModel.h"

#include <array>

namespace quillow::text {

namespace {

enum Kind : std::size_t { boundary, vowel, consonant, accentedVowel, accentedConsonant, kindCount };

/// In tenths of a bit, by kind of the first and of the second.
constexpr int kFollows[kindCount][kindCount] = {
    {140, 25, 5, 33, 51}, {27, 37, 6, 47, 36}, {32, 12, 20, 24, 65}, {19, 36, 7, 58, 62}, {31, 8, 23, 33, 59},
};

struct Letter {
    char16_t letter;
    Kind kind;
    int tenths; ///< among its kind
};

constexpr int kUsual = 42; ///< accented vowels of several languages
constexpr int kRare = 60;  ///< those of few languages; languages with a model of their own do not count

// clang-format off
constexpr Letter kLetters[] = {
    {u'a', vowel, 22}, {u'b', consonant, 55}, {u'c', consonant, 45}, {u'd', consonant, 43}, {u'e', vowel, 19}, {u'f', consonant, 54},
    {u'g', consonant, 48}, {u'h', consonant, 54}, {u'i', vowel, 20}, {u'j', consonant, 56}, {u'k', consonant, 44}, {u'l', consonant, 36},
    {u'm', consonant, 42}, {u'n', consonant, 30}, {u'o', vowel, 28}, {u'p', consonant, 42}, {u'q', consonant, 93}, {u'r', consonant, 31},
    {u's', consonant, 32}, {u't', consonant, 31}, {u'u', vowel, 36}, {u'v', consonant, 47}, {u'w', consonant, 70}, {u'x', consonant, 84},
    {u'y', vowel, 51}, {u'z', consonant, 55},
    {u'ß', accentedConsonant, 45}, {u'à', accentedVowel, kUsual}, {u'á', accentedVowel, kUsual},
    {u'â', accentedVowel, kUsual}, {u'ã', accentedVowel, kRare}, {u'ä', accentedVowel, kUsual},
    {u'å', accentedVowel, kRare}, {u'æ', accentedVowel, kRare}, {u'ç', accentedConsonant, 25},
    {u'è', accentedVowel, kUsual}, {u'é', accentedVowel, kUsual}, {u'ê', accentedVowel, kUsual},
    {u'ë', accentedVowel, kUsual}, {u'ì', accentedVowel, kRare}, {u'í', accentedVowel, kUsual},
    {u'î', accentedVowel, kUsual}, {u'ï', accentedVowel, kRare}, {u'ð', accentedConsonant, kRare},
    {u'ñ', accentedConsonant, 25}, {u'ò', accentedVowel, kRare}, {u'ó', accentedVowel, kUsual},
    {u'ô', accentedVowel, kUsual}, {u'õ', accentedVowel, kRare}, {u'ö', accentedVowel, kUsual},
    {u'ø', accentedVowel, kRare}, {u'ù', accentedVowel, kRare}, {u'ú', accentedVowel, kUsual},
    {u'û', accentedVowel, kUsual}, {u'ü', accentedVowel, kUsual}, {u'ý', accentedVowel, kRare},
    {u'þ', accentedConsonant, kRare}, {u'ÿ', accentedVowel, kRare}, {u'œ', accentedVowel, kRare},
    {u'š', accentedConsonant, kRare}, {u'ž', accentedConsonant, kRare},
};
// clang-format on

constexpr std::size_t kLetterCount = std::size(kLetters);
constexpr std::size_t kClasses = kLetterCount + LanguageModel::kFirstLetter;

constexpr auto makeAlphabet() {
    std::array<char16_t, kLetterCount> alphabet{};
    for (std::size_t i = 0; i < kLetterCount; ++i)
        alphabet[i] = kLetters[i].letter;
    return alphabet;
}

constexpr auto makeBits() {
    // Any other letter counts as one of the rarest.
    const auto letterOf = [](std::size_t letterClass) {
        if (letterClass == LanguageModel::kBoundary) return Letter{0, boundary, 0};
        if (letterClass == LanguageModel::kOtherLetter) return Letter{0, accentedConsonant, 60};
        return kLetters[letterClass - LanguageModel::kFirstLetter];
    };
    std::array<std::uint8_t, kClasses * kClasses> bits{};
    for (std::size_t first = 0; first < kClasses; ++first)
        for (std::size_t second = 0; second < kClasses; ++second) {
            const int tenths = kFollows[letterOf(first).kind][letterOf(second).kind] + letterOf(second).tenths;
            bits[first * kClasses + second] = static_cast<std::uint8_t>(tenths * kStepsPerBit / 10);
        }
    return bits;
}

constexpr auto kAlphabet = makeAlphabet();
constexpr auto kBits = makeBits();

} // namespace

const LanguageModel kUnknownLatinModel{"", Script::latin, {kAlphabet.data(), kAlphabet.size()}, kBits.data()};

} // namespace quillow::text
