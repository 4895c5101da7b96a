// Identifiers, unique names and trimming.
#include "util/MWStringUtils.h"

#include "platform/TextMeasure.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/FakeRandomGenerator.h"
#include "tests/fakes/FakeTextMeasure.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

const QString kLoneHigh(QChar(0xD83D));
const QString kLoneLow(QChar(0xDE00));

class MWStringUtilsTest : public testing::Test {
protected:
    FakeClock clock_; // 5 March 2009, 07:04:09
    FakeRandomGenerator random_;
    FakeTextMeasure measure_;
    UniqueNameState state_;
    MWStringUtils utils_{clock_, random_, measure_, state_};
};

void expectCanonicalUuid(const QString& text) {
    ASSERT_EQ(text.size(), 36);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isHyphen = i == 8 || i == 13 || i == 18 || i == 23;
        EXPECT_TRUE(isHyphen ? text[i] == u'-' : u"0123456789ABCDEF"_s.contains(text[i])) << text.toStdString();
    }
    EXPECT_EQ(text[14], u'4'); // version 4: random
    EXPECT_TRUE(u"89AB"_s.contains(text[19])) << text.toStdString();
}

TEST_F(MWStringUtilsTest, identifiersAreCanonicalAndNew) {
    expectCanonicalUuid(MWStringUtils::createUUIDString());
    expectCanonicalUuid(MWStringUtils::uniqueUUIDString());
    EXPECT_NE(MWStringUtils::createUUIDString(), MWStringUtils::createUUIDString());
    EXPECT_NE(MWStringUtils::uniqueUUIDString(), MWStringUtils::uniqueUUIDString());
}

TEST_F(MWStringUtilsTest, theTimeStringIsFourteenDigits) {
    EXPECT_EQ(utils_.uniqueTimeString(), u"20090305070409"_s);
    clock_.set({QDate(2026, 12, 31), QTime(23, 59, 59, 999)});
    EXPECT_EQ(utils_.uniqueTimeString(), u"20261231235959"_s);
}

TEST_F(MWStringUtilsTest, theRandomNumberHasFiveDigitsOrMore) {
    EXPECT_EQ(utils_.uniqueTimeRandString(), u"2009030507040900001"_s);
    random_.setNext(12344);
    EXPECT_EQ(utils_.uniqueTimeRandString(), u"2009030507040912345"_s);
    // The generator's maximum; the bound is far above it.
    random_.setNext(2147483647);
    EXPECT_EQ(utils_.uniqueTimeRandString(), u"200903050704092147483648"_s);
    random_.setNext(32000000000000);
    EXPECT_EQ(utils_.uniqueTimeRandString(), u"2009030507040900001"_s);
}

TEST_F(MWStringUtilsTest, theGeneratorIsSeededOnceWithTheSecond) {
    EXPECT_TRUE(random_.seeds().empty());
    (void)utils_.uniqueTimeRandString();
    const auto seconds = static_cast<std::uint32_t>(clock_.now().toSecsSinceEpoch());
    clock_.set({QDate(2010, 1, 1), QTime(0, 0)});
    (void)utils_.uniqueTimeRandString();
    const MWStringUtils another(clock_, random_, measure_, state_);
    (void)another.uniqueTimeRandString();
    EXPECT_EQ(random_.seeds(), std::vector<std::uint32_t>{seconds});
}

TEST_F(MWStringUtilsTest, serialsCountWithinASecondAndStartAgainInTheNext) {
    EXPECT_EQ(utils_.uniqueTimeSerialString(), u"200903050704090"_s);
    EXPECT_EQ(utils_.uniqueTimeSerialString(), u"200903050704091"_s);
    clock_.set({QDate(2009, 3, 5), QTime(7, 4, 10)});
    EXPECT_EQ(utils_.uniqueTimeSerialString(), u"200903050704100"_s);
}

TEST_F(MWStringUtilsTest, serialsGoByTheStringLastSeen) {
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(utils_.getNewSerialForTimeString(u"a"_s), QString::number(i));
    EXPECT_EQ(utils_.getNewSerialForTimeString(u"b"_s), u"0"_s);
    EXPECT_EQ(utils_.getNewSerialForTimeString(u"a"_s), u"0"_s);
}

TEST_F(MWStringUtilsTest, theStringLastSeenIsAtFirstTheEmptyOne) {
    EXPECT_EQ(utils_.getNewSerialForTimeString(u""_s), u"1"_s);
}

TEST_F(MWStringUtilsTest, theStateIsTheProcesss) {
    const MWStringUtils one(clock_, random_, measure_);
    const MWStringUtils other(clock_, random_, measure_);
    EXPECT_EQ(one.getNewSerialForTimeString(u"same"_s), u"0"_s);
    EXPECT_EQ(other.getNewSerialForTimeString(u"same"_s), u"1"_s);
}

TEST(TrimString, keepsAcceptedUnitsOnly) {
    EXPECT_EQ(MWStringUtils::trimString(u"a1b2"_s, u"0123456789"_s), u"12"_s);
    EXPECT_EQ(MWStringUtils::trimString(u"2,1,2"_s, u"21"_s), u"212"_s);
    EXPECT_EQ(MWStringUtils::trimString(u""_s, u"abc"_s), u""_s);
    EXPECT_EQ(MWStringUtils::trimString(u"abc"_s, u""_s), u""_s);
    EXPECT_EQ(MWStringUtils::trimString(u"abc"_s, std::nullopt), u""_s);
    EXPECT_EQ(MWStringUtils::trimString(std::nullopt, u"abc"_s), std::nullopt);
}

TEST(TrimString, takesUnitsNotCharacters) {
    const QString face = u"\U0001F600"_s;   // D83D DE00
    const QString rocket = u"\U0001F680"_s; // D83D DE80
    // The high surrogate is in the accepted characters, the low one is not.
    EXPECT_EQ(MWStringUtils::trimString(face + u"x"_s, rocket), kLoneHigh);
    EXPECT_EQ(MWStringUtils::trimString(kLoneLow + kLoneHigh, face), kLoneLow + kLoneHigh);
}

TEST(RemoveInitialSpaces, removesTabsAndSpaceSeparators) {
    EXPECT_EQ(MWStringUtils::removeInitialSpaces(u"  \tab"_s), u"ab"_s);
    EXPECT_EQ(MWStringUtils::removeInitialSpaces(u"\u00a0\u1680\u2003\u202f\u205f\u3000a \t"_s), u"a \t"_s);
    EXPECT_EQ(MWStringUtils::removeInitialSpaces(u"ab"_s), u"ab"_s);
}

TEST(RemoveInitialSpaces, leavesLineBreaksAndWhatOnlyLooksEmpty) {
    for (const auto& text : {u"\na"_s, u"\ra"_s, u"\u000ba"_s, u"\u2028a"_s, u"\u0085a"_s, u"\u200ba"_s, u"\ufeffa"_s})
        EXPECT_EQ(MWStringUtils::removeInitialSpaces(text), text);
}

TEST(RemoveInitialSpaces, nothingLeftIsNil) {
    EXPECT_EQ(MWStringUtils::removeInitialSpaces(u"   "_s), std::nullopt);
    EXPECT_EQ(MWStringUtils::removeInitialSpaces(u" \t\u00a0"_s), std::nullopt);
    EXPECT_EQ(MWStringUtils::removeInitialSpaces(u""_s), std::nullopt);
    EXPECT_EQ(MWStringUtils::removeInitialSpaces(std::nullopt), std::nullopt);
}

TEST(TrimLateralSpace, trimsTheSpaceOnly) {
    for (const auto trim : {&MWStringUtils::trimLateralSpace, &MWStringUtils::removeLateralSpace}) {
        EXPECT_EQ(trim(u"  a b  "_s), u"a b"_s);
        EXPECT_EQ(trim(u" \ta\n "_s), u"\ta\n"_s);
        EXPECT_EQ(trim(u"\u00a0a\u00a0"_s), u"\u00a0a\u00a0"_s);
        EXPECT_EQ(trim(u"   "_s), u""_s);
        EXPECT_EQ(trim(u" "_s + kLoneLow), kLoneLow);
        EXPECT_EQ(trim(std::nullopt), std::nullopt);
    }
}

TEST(SpaceTrimmedNotEmpy, tellsWhetherSomethingIsLeft) {
    EXPECT_TRUE(MWStringUtils::spaceTrimmedNotEmpy(u" a "_s));
    EXPECT_TRUE(MWStringUtils::spaceTrimmedNotEmpy(u"\t"_s));
    EXPECT_FALSE(MWStringUtils::spaceTrimmedNotEmpy(u"   "_s));
    EXPECT_FALSE(MWStringUtils::spaceTrimmedNotEmpy(u""_s));
    EXPECT_FALSE(MWStringUtils::spaceTrimmedNotEmpy(std::nullopt));
}

TEST(TrimLateralQuote, trimsDoubleQuotesOnly) {
    EXPECT_EQ(MWStringUtils::trimLateralQuote(u"\"\"a\"b\""_s), u"a\"b"_s);
    EXPECT_EQ(MWStringUtils::trimLateralQuote(u"'a'"_s), u"'a'"_s);
    EXPECT_EQ(MWStringUtils::trimLateralQuote(u"\u201ca\u201d"_s), u"\u201ca\u201d"_s);
    EXPECT_EQ(MWStringUtils::trimLateralQuote(u"\"\"\""_s), u""_s);
    EXPECT_EQ(MWStringUtils::trimLateralQuote(std::nullopt), std::nullopt);
}

TEST(StripNewLines, removesCarriageReturnsAndLineFeeds) {
    EXPECT_EQ(MWStringUtils::stripNewLines(u"a\r\nb\n\rc"_s), u"abc"_s);
    EXPECT_EQ(MWStringUtils::stripNewLines(u"\n\n\r\r"_s), u""_s);
    EXPECT_EQ(MWStringUtils::stripNewLines(u"a\u2028b\u0085"_s), u"a\u2028b\u0085"_s);
    EXPECT_EQ(MWStringUtils::stripNewLines(std::nullopt), std::nullopt);
}

} // namespace
} // namespace quillow
