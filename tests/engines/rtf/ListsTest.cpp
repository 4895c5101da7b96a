#include "engines/rtf/Lists.h"

#include <gtest/gtest.h>

namespace quillow::rtf {
namespace {

struct NumberCase {
    int format;
    std::uint32_t value;
    std::u32string_view text;
};

TEST(Numbers, formatsGiveTheirNumber) {
    constexpr NumberCase kCases[] = {
        {0, 12, U"12"},          {1, 1994, U"MCMXCIV"},  {2, 4, U"iv"},
        {2, 40000, U"40000"},    {2, 0, U"0"},           {3, 26, U"Z"},
        {4, 27, U"aa"},          {4, 53, U"aaa"},        {4, 1000, U"1000"},
        {5, 1, U"1st"},          {5, 12, U"12th"},       {5, 23, U"23rd"},
        {6, 21, U"Twenty-one"},  {7, 40, U"Fortieth"},   {7, 32, U"Thirty-second"},
        {10, 10, U"一〇"},       {11, 21, U"二十一"},    {11, 1115, U"千百十五"},
        {12, 2, U"ｲ"},           {13, 2, U"ﾛ"},          {13, 25, U"ヰ"},
        {16, 105, U"壱百伍"},    {17, 10, U"一〇"},      {20, 2, U"イ"},
        {21, 2, U"ロ"},          {26, 1, U"⒈"},          {27, 20, U"⒇"},
        {29, 10, U"㈩"},         {29, 11, U"11"},        {30, 11, U"11"},
        {31, 12, U"亥"},         {31, 13, U"13"},        {33, 12, U"十二"},
        {33, 110, U"一一○"},     {35, 110, U"一百一十"}, {36, 10, U"一○"},
        {37, 99, U"九十九"},     {37, 100, U"一○○"},     {38, 105, U"壹佰零伍"},
        {39, 1002, U"一千零二"}, {40, 7, U"7"},          {41, 10, U"일영"},
        {42, 110, U"백십"},      {43, 21, U"스물하나"},  {43, 100, U"100"},
        {44, 10, U"一零"},       {49, 1, U"क"},          {50, 1, U"अ"},
        {14, 10, U"１０"},       {18, 20, U"⑳"},         {18, 21, U"21"},
        {22, 7, U"07"},          {22, 12, U"12"},        {23, 5, U""},
        {24, 1, U"가"},          {30, 1, U"甲"},         {32, 13, U"丙子"},
        {34, 11, U"壹拾壹"},     {45, 15, U"טו"},        {45, 111, U"קיא"},
        {47, 11, U"כ"},          {47, 23, U"23"},        {53, 1, U"ก"},
        {54, 15, U"๑๕"},         {57, 3, U"- 3 -"},      {58, 2, U"б"},
        {255, 9, U""},           {4711, 9, U"9"},        {-1, 9, U"9"},
    };
    for (const NumberCase& numberCase : kCases) {
        std::u32string text;
        appendNumber(text, NumberFormat{numberCase.format}, numberCase.value);
        EXPECT_EQ(text, numberCase.text) << numberCase.format << ' ' << numberCase.value;
    }
}

TEST(Numbers, noNumberIsLongerThanTheLimit) {
    for (int format = 0; format <= 60; ++format) {
        for (const std::uint32_t value : {0U, 1U, 99U, 780U, 3888U, 27888U, 32767U, 0xFFFFFFFEU}) {
            std::u32string text;
            appendNumber(text, NumberFormat{format}, value);
            EXPECT_LE(text.size(), kMaxNumberLength) << format << ' ' << value;
        }
    }
}

class ListsTest : public testing::Test {
protected:
    ListsTest() { lists_.reset(); }

    void readTables(std::string_view lists, std::string_view overrides) {
        Scanner listScanner(lists);
        (void)lists_.readListTable(listScanner);
        Scanner overrideScanner(overrides);
        (void)lists_.readOverrideTable(overrideScanner);
    }

    CharsetPool pool_;
    FontTable fonts_{pool_};
    Lists lists_{fonts_, 1};
};

constexpr std::string_view kTwoLevels = "{\\list{\\listlevel\\levelnfc0\\levelstartat1{\\leveltext\\'02\\'00.;}}"
                                        "{\\listlevel\\levelnfc0{\\leveltext\\'04\\'00.\\'01.;}}\\listid7}}";

TEST_F(ListsTest, unicodeInALabelIsReadAsInTheBody) {
    readTables("{\\list{\\listlevel\\levelnfc23\\levelfollow2{\\leveltext\\'04\\u-3913?\\u-65537?\\u\\u65?\\u8226?;}}"
               "\\listid7}}",
               "{\\listoverride\\listid7\\ls1}}");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"\u2022\uFFFDA\u2022") << "\\u without a number writes nothing";
}

TEST_F(ListsTest, deeperLevelsBeginAnewAndShowTheirParents) {
    readTables(kTwoLevels, "{\\listoverride\\listid7\\ls1}}");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"1.\t");
    EXPECT_EQ(lists_.nextLabel(1, 1), U"1.1.\t");
    EXPECT_EQ(lists_.nextLabel(1, 1), U"1.2.\t");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"2.\t");
    EXPECT_EQ(lists_.nextLabel(1, 1), U"2.1.\t");
}

TEST_F(ListsTest, levelsNotBegunShowTheirStart) {
    readTables(kTwoLevels, "{\\listoverride\\listid7\\ls1}}");
    EXPECT_EQ(lists_.nextLabel(1, 1), U"1.1.\t");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"2.\t");
}

TEST_F(ListsTest, overridesOfOneListGoOnCountingUnlessTheyStartAnew) {
    readTables(kTwoLevels, "{\\listoverride\\listid7\\ls1}{\\listoverride\\listid7\\ls2}"
                           "{\\listoverride\\listid7{\\lfolevel\\listoverridestartat\\levelstartat5}\\ls3}}");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"1.\t");
    EXPECT_EQ(lists_.nextLabel(2, 0), U"2.\t");
    EXPECT_EQ(lists_.nextLabel(3, 0), U"5.\t");
    EXPECT_EQ(lists_.nextLabel(3, 0), U"6.\t");
}

TEST_F(ListsTest, overridingLevelReplacesTheLists) {
    readTables(kTwoLevels,
               "{\\listoverride\\listid7{\\lfolevel\\listoverrideformat1{\\listlevel\\levelnfc3\\levelfollow2"
               "{\\leveltext\\'02\\'00);}}}\\ls1}}");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"A)");
}

TEST_F(ListsTest, unknownOverridesHaveNoLabel) {
    readTables(kTwoLevels, "{\\listoverride\\listid8\\ls1}}");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"");
    EXPECT_EQ(lists_.nextLabel(2, 0), U"");
    EXPECT_EQ(lists_.nextLabel(-3, 99), U"");
}

TEST_F(ListsTest, levelTextIsCutToItsLengthAndToTheLimit) {
    readTables("{\\list{\\listlevel{\\leveltext\\'01ab;}}\\listid1}"
               "{\\list{\\listlevel{\\leveltext\\'ff" +
                   std::string(500, 'x') + ";}}\\listid2}}",
               "{\\listoverride\\listid1\\ls1}{\\listoverride\\listid2\\ls2}}");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"a\t");
    EXPECT_LE(lists_.nextLabel(2, 0).size(), LabelTemplate::kMaxUnits);
}

TEST_F(ListsTest, listsOverTheLimitAreNotKept) {
    std::string tables;
    for (std::size_t i = 0; i <= Lists::kMaxLists; ++i)
        tables += "{\\list{\\listlevel{\\leveltext\\'01x;}}\\listid" + std::to_string(i) + "}";
    const std::string last = std::to_string(Lists::kMaxLists - 1);
    const std::string over = std::to_string(Lists::kMaxLists);
    readTables(tables + "}", "{\\listoverride\\listid" + last + "\\ls1}{\\listoverride\\listid" + over + "\\ls2}}");
    EXPECT_EQ(lists_.nextLabel(1, 0), U"x\t");
    EXPECT_EQ(lists_.nextLabel(2, 0), U"");
}

} // namespace
} // namespace quillow::rtf
