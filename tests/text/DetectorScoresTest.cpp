// What the encoding detector looks at, and how it weighs it: the parts that a text's encoding seldom hangs on alone.
#include "text/DetectorScores.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace quillow::text {
namespace {

std::string wordsOf(std::string_view bytes) {
    return DetectorSample(bytes, 1000).words;
}

DetectorSample sampleOf(std::string_view words) {
    DetectorSample sample("", 0);
    sample.words = words;
    return sample;
}

std::uint64_t costInAlphabet(std::string_view words, Encoding encoding, std::string_view language) {
    const LanguageModel* const end = kLanguageModels + kLanguageModelCount;
    const LanguageModel* const model =
        std::find_if(kLanguageModels, end, [&](const LanguageModel& m) { return m.language == language; });
    return alphabetCost(BytePairCounts(sampleOf(words)), encoding, *model);
}

std::uint64_t costInEastAsian(std::string_view words, Encoding encoding) {
    return eastAsianCost(sampleOf(words), encoding, std::numeric_limits<std::uint64_t>::max());
}

TEST(DetectorSample, wordsWithHighBytesAreGathered) {
    EXPECT_EQ(wordsOf("one \xE9t\xE9, two <b>\xE0</b>"), " \xE9t\xE9 \xE0 ");
}

TEST(DetectorSample, whatFollowsUnclosedMarkupIsGatheredOnce) {
    EXPECT_EQ(wordsOf("\xE0 <!-- \xE9t\xE9"), " \xE0 \xE9t\xE9 ");
    EXPECT_EQ(wordsOf("\xE0 <!-- <!-- \xE9t\xE9"), " \xE0 \xE9t\xE9 ");
    EXPECT_EQ(wordsOf("\xE0 <a <a \xE9t\xE9"), " \xE0 \xE9t\xE9 ");
}

TEST(DetectorSample, bytesAreNotReadBeyondTheirEnd) {
    const std::vector<char> bytes = {'\xE9', 't', '\xE9'}; // without a byte after them, so that sanitizers notice
    EXPECT_EQ(wordsOf({bytes.data(), bytes.size()}), " \xE9t\xE9 ");
}

TEST(AlphabetCost, noHighByteIsFree) {
    for (unsigned byte = 0x80; byte < 0x100; ++byte) {
        const std::string word = {' ', static_cast<char>(byte), ' '};
        EXPECT_GT(costInAlphabet(word, Encoding::windows1252, "de"), 0U) << byte;
    }
}

TEST(AlphabetCost, signsThatOpenAreUnlikelyAfterAWord) {
    for (const char sign : {'\xA1', '\xBF', '\x82', '\x84'}) {
        const std::string after = {' ', 'e', 's', sign, ' '};
        const std::string before = {' ', sign, 'e', 's', ' '};
        EXPECT_GT(costInAlphabet(after, Encoding::windows1252, "es"),
                  costInAlphabet(before, Encoding::windows1252, "es"))
            << sign;
    }
}

TEST(AlphabetCost, romanianCommasBelowCountAsCedillas) {
    // The same bytes, with commas in the one encoding and cedillas in the other.
    for (const std::string_view word : {" \xBA"
                                        "i ",
                                        " \xAA"
                                        "I ",
                                        " a\xFE"
                                        "i ",
                                        " A\xDE"
                                        "I "})
        EXPECT_EQ(costInAlphabet(word, Encoding::iso8859_16, "ro"), costInAlphabet(word, Encoding::iso8859_2, "ro"));
}

TEST(AlphabetCost, capitalsAtTheStartOfAWordCountAsSmallLetters) {
    struct Pair {
        Encoding encoding;
        const char* language;
        char capital;
        char small;
    };
    const Pair pairs[] = {
        {Encoding::windows1252, "de", 'A', 'a'},       {Encoding::windows1252, "de", '\xC4', '\xE4'},
        {Encoding::windows1252, "fr", '\x9F', '\xFF'}, {Encoding::windows1250, "pl", '\xAF', '\xBF'},
        {Encoding::windows1250, "pl", '\xA3', '\xB3'}, {Encoding::windows1254, "tr", '\xDD', 'i'},
        {Encoding::windows1254, "tr", '\xDE', '\xFE'}, {Encoding::windows1258, "vi", '\xD5', '\xF5'},
        {Encoding::windows1258, "vi", '\xDD', '\xFD'}, {Encoding::windows1253, "el", '\xA2', '\xDC'},
        {Encoding::windows1253, "el", '\xB8', '\xDD'}, {Encoding::windows1253, "el", '\xBC', '\xFC'},
        {Encoding::windows1253, "el", '\xBE', '\xFD'}, {Encoding::windows1253, "el", '\xBF', '\xFE'},
        {Encoding::windows1253, "el", '\xC1', '\xE1'}, {Encoding::windows1251, "ru", '\xA8', '\xB8'},
        {Encoding::windows1251, "ru", '\xDF', '\xFF'}, {Encoding::windows1251, "uk", '\xA5', '\xB4'},
    };
    for (const Pair& pair : pairs) {
        const std::string capital = {' ', pair.capital, ' '};
        const std::string small = {' ', pair.small, ' '};
        EXPECT_EQ(costInAlphabet(capital, pair.encoding, pair.language),
                  costInAlphabet(small, pair.encoding, pair.language))
            << pair.language << ' ' << int{static_cast<unsigned char>(pair.capital)};
    }
}

TEST(AlphabetCost, theVietnameseLettersWithAHornAreNotForeign) {
    for (const char letter : {'\xD5', '\xF5', '\xDD', '\xFD'}) {
        const std::string word = {' ', letter, ' '};
        EXPECT_LT(costInAlphabet(word, Encoding::windows1258, "vi"),
                  costInAlphabet(" \xDF ", Encoding::windows1258, "vi"))
            << int{static_cast<unsigned char>(letter)};
    }
}

TEST(AlphabetCost, everyAsciiLetterIsForeignToAnotherAlphabet) {
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const std::string word = {' ', '\xE0', letter, '\xE0', ' '};
        EXPECT_EQ(costInAlphabet(word, Encoding::windows1251, "ru"),
                  costInAlphabet(" \xE0m\xE0 ", Encoding::windows1251, "ru"))
            << letter;
    }
}

TEST(EastAsianCost, asciiLettersAreUnlikelyBesideACharacter) {
    const std::uint64_t apart = costInEastAsian(" \x82\xA0 a ", Encoding::shiftJis);
    EXPECT_GT(costInEastAsian(" \x82\xA0"
                              "a  ",
                              Encoding::shiftJis),
              apart);
    EXPECT_GT(costInEastAsian(" a\x82\xA0  ", Encoding::shiftJis), apart);
}

TEST(EastAsianCost, everyAsciiLetterIsALetter) {
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const std::string word = {' ', '\x82', '\xA0', letter, ' '};
        EXPECT_EQ(costInEastAsian(word, Encoding::shiftJis), costInEastAsian(" \x82\xA0m ", Encoding::shiftJis))
            << letter;
    }
}

TEST(EastAsianCost, theSymbolRowsOfAnEncodingCostTheSame) {
    EXPECT_EQ(costInEastAsian("\xA1\xE8", Encoding::gb18030), costInEastAsian("\xA2\xE5", Encoding::gb18030));
    EXPECT_EQ(costInEastAsian("\xA1\xE8", Encoding::gb18030), costInEastAsian("\xA3\xDC", Encoding::gb18030));
    EXPECT_EQ(costInEastAsian("\xA1\xB1", Encoding::big5), costInEastAsian("\xA3\x44", Encoding::big5));
}

TEST(EastAsianCost, supplementaryCharactersAreRare) {
    const std::string_view bytes = "\x87\x45";
    ASSERT_EQ(decode(bytes, Encoding::big5).utf8, "\U00027267");
    EXPECT_GT(costInEastAsian(bytes, Encoding::big5), costInEastAsian("\xA4\x40", Encoding::big5));
}

} // namespace
} // namespace quillow::text
