#include "text/CodePage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillow::text {
namespace {

struct ByteCase {
    int page;
    std::uint8_t byte;
    char32_t codePoint;
};

struct PairCase {
    int page;
    std::uint8_t lead;
    std::uint8_t trail;
    char32_t codePoint;
};

const std::vector<int> kEveryPage = {
    437,   708,   720,   737,   775,   819,   850,   852,   855,   857,   858,   860,   861,   862,   863,   864,
    865,   866,   869,   874,   932,   936,   949,   950,   1250,  1251,  1252,  1253,  1254,  1255,  1256,  1257,
    1258,  1361,  10000, 10001, 10002, 10003, 10004, 10005, 10006, 10007, 10008, 10010, 10017, 10021, 10029, 10079,
    10081, 10082, 20127, 20866, 21866, 28591, 28592, 28593, 28594, 28595, 28596, 28597, 28598, 28599, 28600, 28603,
    28604, 28605, 28606, 57002, 57003, 57004, 57005, 57006, 57007, 57008, 57009, 57010, 57011};

TEST(CodePage, everyPageIsFoundUnderItsNumber) {
    for (const int number : kEveryPage) {
        const CodePage* page = CodePage::forNumber(number);
        ASSERT_NE(page, nullptr) << number;
        EXPECT_EQ(page->number(), number);
    }
}

TEST(CodePage, otherNumbersHaveNoPage) {
    for (const int number : {-1, 0, 1, 709, 710, 711, 1200, 1259, 65001, 100000})
        EXPECT_EQ(CodePage::forNumber(number), nullptr) << number;
}

TEST(CodePage, everyPageKeepsAscii) {
    for (const int number : kEveryPage) {
        if (number == 864) continue; // has the Arabic percent sign at 0x25
        const CodePage* page = CodePage::forNumber(number);
        for (unsigned byte = 0; byte < 0x80; ++byte)
            EXPECT_EQ(page->decodeByte(static_cast<std::uint8_t>(byte)), char32_t{byte}) << number;
    }
}

TEST(CodePage, bytesAreWhatTheVendorsTablesSay) {
    const ByteCase cases[] = {
        {437, 0x82, U'é'},     {437, 0xE1, U'ß'},     {708, 0xC7, U'ا'},     {720, 0x9F, U'ا'},
        {737, 0x80, U'Α'},     {775, 0x80, U'Ć'},     {819, 0xE9, U'é'},     {850, 0xD5, U'ı'},
        {852, 0x88, U'ł'},     {855, 0xA0, U'а'},     {857, 0x98, U'İ'},     {858, 0xD5, U'€'},
        {860, 0x84, U'ã'},     {861, 0x8B, U'Ð'},     {862, 0x80, U'א'},     {863, 0x84, U'Â'},
        {864, 0x25, U'٪'},     {865, 0x9D, U'Ø'},     {866, 0x80, U'А'},     {869, 0xD6, U'α'},
        {874, 0x80, U'€'},     {874, 0xA1, U'ก'},     {932, 0xB1, U'ｱ'},     {936, 0x80, U'€'},
        {1250, 0x8C, U'Ś'},    {1251, 0xC0, U'А'},    {1252, 0x80, U'€'},    {1252, 0x9F, U'Ÿ'},
        {1253, 0xC1, U'Α'},    {1254, 0xFD, U'ı'},    {1255, 0xE0, U'א'},    {1255, 0xCA, 0x05BA},
        {1256, 0xC7, U'ا'},    {1257, 0xE0, U'ą'},    {1258, 0xFE, U'₫'},    {1258, 0xCC, 0x0300},
        {10000, 0x8E, U'é'},   {10000, 0xDB, U'€'},   {10001, 0xFD, U'©'},   {10003, 0x81, U'₩'},
        {10004, 0xC7, U'ا'},   {10005, 0xE0, U'א'},   {10005, 0xB1, U'1'},   {10005, 0x81, 0xFB1F},
        {10005, 0xA8, U')'},   {10005, 0xA9, U'('},   {10005, 0xC0, U'ל'},   {10005, 0xC8, 0xFB35},
        {10005, 0xCB, 0x05B8}, {10005, 0xD8, 0x05BF}, {10005, 0xDD, 0x05B9}, {10006, 0xE1, U'α'},
        {10007, 0x80, U'А'},   {10008, 0x80, U'ü'},   {10010, 0xAF, U'Ș'},   {10017, 0xA2, U'Ґ'},
        {10021, 0xA1, U'ก'},   {10021, 0x88, 0x0E48}, {10029, 0x88, U'ą'},   {10079, 0xDC, U'Ð'},
        {10081, 0xDD, U'ı'},   {10082, 0xE8, U'č'},   {20866, 0xC1, U'а'},   {21866, 0xA4, U'є'},
        {21866, 0xAE, U'ў'},   {28591, 0xE9, U'é'},   {28592, 0xB1, U'ą'},   {28593, 0xA1, U'Ħ'},
        {28594, 0xA2, U'ĸ'},   {28595, 0xB0, U'А'},   {28596, 0xC7, U'ا'},   {28597, 0xC1, U'Α'},
        {28598, 0xE0, U'א'},   {28599, 0xFD, U'ı'},   {28600, 0xBD, U'―'},   {28603, 0xE0, U'ą'},
        {28604, 0xA1, U'Ḃ'},   {28605, 0xA4, U'€'},   {28606, 0xAA, U'Ș'},   {57002, 0xB3, U'क'},
        {57003, 0xB3, U'ক'},   {57004, 0xB3, U'க'},   {57005, 0xB3, U'క'},   {57006, 0xB3, U'ক'},
        {57007, 0xB3, U'କ'},   {57008, 0xB3, U'ಕ'},   {57009, 0xB3, U'ക'},   {57010, 0xB3, U'ક'},
        {57011, 0xB3, U'ਕ'},
    };
    for (const ByteCase& c : cases)
        EXPECT_EQ(CodePage::forNumber(c.page)->decodeByte(c.byte), c.codePoint) << c.page << ' ' << int{c.byte};
}

TEST(CodePage, bytesWithoutCharacterAreReplacementCharacters) {
    const ByteCase cases[] = {
        {874, 0x81, 0xFFFD},   {874, 0xFC, 0xFFFD},   {932, 0x80, 0xFFFD},   {932, 0xA0, 0xFFFD},
        {936, 0xFF, 0xFFFD},   {1252, 0x81, 0xFFFD},  {1252, 0x9D, 0xFFFD},  {1253, 0xAA, 0xFFFD},
        {1255, 0xFF, 0xFFFD},  {1257, 0xA1, 0xFFFD},  {10005, 0xC5, 0xFFFD}, {20127, 0x80, 0xFFFD},
        {28596, 0xA1, 0xFFFD}, {28597, 0xFF, 0xFFFD}, {57002, 0x80, 0xFFFD},
    };
    for (const ByteCase& c : cases)
        EXPECT_EQ(CodePage::forNumber(c.page)->decodeByte(c.byte), c.codePoint) << c.page << ' ' << int{c.byte};
}

TEST(CodePage, pairsAreWhatTheVendorsTablesSay) {
    const PairCase cases[] = {
        {932, 0x82, 0xA0, U'あ'},   {932, 0x93, 0xFA, U'日'},  {932, 0x83, 0x5C, U'ソ'},   {932, 0x87, 0x40, U'①'},
        {932, 0x81, 0x60, U'～'},   {932, 0xFB, 0xFC, U'髙'},  {932, 0xF0, 0x40, 0xE000},  {936, 0xD6, 0xD0, U'中'},
        {936, 0x81, 0x40, U'丂'},   {936, 0xA1, 0xAA, U'—'},   {949, 0xB0, 0xA1, U'가'},   {949, 0x81, 0x41, U'갂'},
        {949, 0xA1, 0xA1, U'　'},   {949, 0xCA, 0xA1, U'伽'},  {950, 0xA4, 0xA4, U'中'},   {950, 0xA3, 0xE1, U'€'},
        {950, 0xA1, 0x45, U'‧'},    {950, 0xF9, 0xD6, U'碁'},  {950, 0xA5, 0x5C, U'功'},   {1361, 0x88, 0x61, U'가'},
        {1361, 0x88, 0x62, U'각'},  {1361, 0xD3, 0xBD, U'힣'}, {1361, 0xE0, 0x31, U'伽'},  {1361, 0xD9, 0x31, U'　'},
        {10001, 0x82, 0xA0, U'あ'}, {10001, 0x85, 0x40, U'①'}, {10002, 0xA4, 0xA4, U'中'}, {10003, 0xB0, 0xA1, U'가'},
        {10008, 0xD6, 0xD0, U'中'},
    };
    for (const PairCase& c : cases) {
        const CodePage* page = CodePage::forNumber(c.page);
        EXPECT_TRUE(page->isLeadByte(c.lead)) << c.page << ' ' << int{c.lead};
        EXPECT_EQ(page->decodePair(c.lead, c.trail), c.codePoint)
            << c.page << ' ' << int{c.lead} << ' ' << int{c.trail};
    }
}

TEST(CodePage, pairsWithoutCharacterAreReplacementCharacters) {
    const PairCase cases[] = {
        {932, 0x82, 0x20, 0xFFFD},  {932, 0x82, 0x7F, 0xFFFD},  {932, 0x41, 0x42, 0xFFFD}, {932, 0xB1, 0x40, 0xFFFD},
        {936, 0x81, 0xFF, 0xFFFD},  {949, 0xC7, 0x41, 0xFFFD},  {950, 0x81, 0x40, 0xFFFD}, {10003, 0xB0, 0x41, 0xFFFD},
        {1252, 0x82, 0xA0, 0xFFFD}, {1361, 0x88, 0x20, 0xFFFD},
    };
    for (const PairCase& c : cases)
        EXPECT_EQ(CodePage::forNumber(c.page)->decodePair(c.lead, c.trail), c.codePoint)
            << c.page << ' ' << int{c.lead};
}

TEST(CodePage, onlyEastAsianPagesHavePairs) {
    for (const int number : kEveryPage) {
        const CodePage* page = CodePage::forNumber(number);
        const bool eastAsian = number == 932 || number == 936 || number == 949 || number == 950 || number == 1361 ||
                               (number >= 10001 && number <= 10003) || number == 10008;
        EXPECT_EQ(page->isDoubleByte(), eastAsian) << number;
        bool hasLead = false;
        for (unsigned byte = 0; byte < 0x100; ++byte)
            hasLead |= page->isLeadByte(static_cast<std::uint8_t>(byte));
        EXPECT_EQ(hasLead, eastAsian) << number;
    }
}

TEST(CodePage, leadBytesAreNoCharactersAlone) {
    EXPECT_EQ(CodePage::forNumber(932)->decodeByte(0x82), char32_t{0xFFFD});
    EXPECT_FALSE(CodePage::forNumber(932)->isLeadByte(0xB1));
    EXPECT_FALSE(CodePage::forNumber(10001)->isLeadByte(0xFD));
}

TEST(CodePage, everyByteAndPairIsAScalarValue) {
    for (const int number : kEveryPage) {
        const CodePage* page = CodePage::forNumber(number);
        for (unsigned lead = 0; lead < 0x100; ++lead) {
            EXPECT_NE(page->decodeByte(static_cast<std::uint8_t>(lead)), char32_t{0xFFFF});
            if (!page->isDoubleByte()) continue;
            for (unsigned trail = 0; trail < 0x100; ++trail) {
                const char32_t c = page->decodePair(static_cast<std::uint8_t>(lead), static_cast<std::uint8_t>(trail));
                EXPECT_TRUE(c != 0 && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF))
                    << number << ' ' << lead << ' ' << trail;
            }
        }
    }
}

} // namespace
} // namespace quillow::text
