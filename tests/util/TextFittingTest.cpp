// Cutting a text to a width: the result is that of the defining loop, and measuring a long text does not cost
// quadratic work.
#include "util/TextFitting.h"

#include "tests/fakes/FakeClock.h"
#include "tests/fakes/FakeRandomGenerator.h"
#include "tests/fakes/FakeTextMeasure.h"
#include "util/MWStringUtils.h"

#include <gtest/gtest.h>

#include <random>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

class TextFittingTest : public testing::Test {
protected:
    /// The result of the public operation.
    QString fitted(const QString& text, std::int32_t limit) const {
        return utils_.trimStringToFit(text, limit, attributes_).value();
    }
    /// The loop that defines the result.
    QString fittedByLoop(QString text, std::int32_t limit) const {
        if (measure_.width(text, attributes_) <= limit) return text;
        while (measure_.width(text + u".."_s, attributes_) > limit && text.size() >= 2)
            text.chop(1);
        return text + u".."_s;
    }
    /// The most units that may be measured.
    static std::int64_t bound(qsizetype length) { return TextFitting::kLoopUnits + 16 * length + 1000; }

    FakeClock clock_;
    FakeRandomGenerator random_;
    FakeTextMeasure measure_; // 10 a unit
    TextAttributes attributes_{u"Sans"_s, 12, false, false};
    MWStringUtils utils_{clock_, random_, measure_};
};

TEST_F(TextFittingTest, aTextThatFitsStays) {
    EXPECT_EQ(fitted(u"abc"_s, 30), u"abc"_s);
    EXPECT_EQ(fitted(u""_s, 0), u""_s);
    EXPECT_EQ(measure_.lastAttributes(), attributes_);
}

TEST_F(TextFittingTest, aTextTooWideLosesUnitsUntilItFitsWithTwoPoints) {
    EXPECT_EQ(fitted(u"abcdef"_s, 59), u"abc.."_s);
    EXPECT_EQ(fitted(u"abcdef"_s, 50), u"abc.."_s);
    EXPECT_EQ(fitted(u"abcdef"_s, 49), u"ab.."_s);
}

TEST_F(TextFittingTest, oneUnitAlwaysStays) {
    EXPECT_EQ(fitted(u"abc"_s, 5), u"a.."_s);
    EXPECT_EQ(fitted(u"abc"_s, 0), u"a.."_s);
    EXPECT_EQ(fitted(u"abc"_s, -5), u"a.."_s);
    EXPECT_EQ(fitted(u"a"_s, 5), u"a.."_s);
    EXPECT_EQ(fitted(u""_s, -5), u".."_s);
    EXPECT_EQ(fitted(QString(5000, u'x'), 0), u"x.."_s);
}

TEST_F(TextFittingTest, nilStaysNil) {
    EXPECT_EQ(utils_.trimStringToFit(std::nullopt, 100, attributes_), std::nullopt);
}

TEST_F(TextFittingTest, unitsAreCutNotCharacters) {
    EXPECT_EQ(fitted(u"a\U0001F600bc"_s, 40), u"a"_s + QChar(0xD83D) + u".."_s);
}

TEST_F(TextFittingTest, theLongestBeginningIsFoundWhereWidthsGoUpAndDown) {
    // "fi" is one narrow letter: "aaf.." is wider than "aafi..".
    measure_.setKerning(u'f', u'i', -15);
    EXPECT_EQ(fitted(u"aafibbbbbb"_s, 54), u"aafi.."_s);
    EXPECT_EQ(fitted(u"aafibbbbbb"_s, 45), u"aafi.."_s);
    EXPECT_EQ(fitted(u"aafibbbbbb"_s, 44), u"aa.."_s);
}

TEST_F(TextFittingTest, agreesWithTheLoopOnRandomTextsWithKerning) {
    std::mt19937 random(7);
    const QString alphabet = u"abcdefgh"_s;
    measure_.setWidth(u'h', 0);
    measure_.setWidth(u'g', 31.5);
    for (const QChar before : alphabet)
        for (const QChar unit : alphabet)
            measure_.setKerning(before, unit, static_cast<double>(random() % 30) - 20);
    for (int i = 0; i < 60; ++i) {
        QString text;
        for (auto length = random() % 500; length > 0; --length)
            text += alphabet[static_cast<qsizetype>(random() % 8)];
        const auto limit = static_cast<std::int32_t>(random() % 1200);
        ASSERT_EQ(fitted(text, limit), fittedByLoop(text, limit)) << text.toStdString() << " in " << limit;
    }
}

TEST_F(TextFittingTest, aLongTextIsNotMeasuredWhole) {
    const QString text(5'000'000, u'x');
    EXPECT_EQ(fitted(text, 300), QString(28, u'x') + u".."_s);
    EXPECT_LT(measure_.measuredUnits(), 20'000);
}

TEST_F(TextFittingTest, aLongTextInAWideLimitIsCutExactly) {
    const QString text(1'000'000, u'x');
    EXPECT_EQ(fitted(text, 100'000), QString(9998, u'x') + u".."_s);
    EXPECT_LT(measure_.measuredUnits(), bound(10'000));
}

TEST_F(TextFittingTest, aTextMadeToBeSlowIsCutToSomethingThatFits) {
    // Thousands of marks over three letters: as wide as three letters, which is just too wide.
    measure_.setWidth(u'\u0301', 0);
    const QString text = u"WWW"_s + QString(200'000, u'\u0301');
    EXPECT_EQ(fitted(text, 29), u"W.."_s);
    EXPECT_LT(measure_.measuredUnits(), bound(text.size()));
}

TEST_F(TextFittingTest, aLimitWiderThanAnyScreenKeepsTheWorkLinear) {
    const QString text(1'000'000, u'x');
    const QString cut = fitted(text, 5'000'000);
    EXPECT_LE(measure_.width(cut, attributes_), 5'000'000);
    EXPECT_TRUE(cut.endsWith(u"xx.."_s));
    EXPECT_GT(cut.size(), 400'000);
    EXPECT_LT(measure_.measuredUnits(), bound(text.size()));
}

} // namespace
} // namespace quillow
