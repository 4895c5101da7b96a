#include "base/Boxed.h"

#include "base/KVObject.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

constexpr std::int64_t kLongMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLongMin = std::numeric_limits<std::int64_t>::min();

TEST(Boxed, nilDiffersFromEveryEmptyValue) {
    EXPECT_TRUE(Boxed().isNil());
    EXPECT_TRUE(Boxed(nullptr).isNil());
    EXPECT_TRUE(Boxed(std::nullopt).isNil());
    EXPECT_EQ(Boxed(), Boxed(nullptr));
    for (const Boxed& empty : {Boxed(u""_s), Boxed(QString()), Boxed(QByteArray()), Boxed(0), Boxed(false),
                               Boxed(Boxed::Array()), Boxed(Boxed::Dictionary()), Boxed(QDateTime())}) {
        EXPECT_FALSE(empty.isNil());
        EXPECT_FALSE(empty == Boxed());
    }
}

TEST(Boxed, absentStringsAndBytesBecomeNil) {
    EXPECT_TRUE(Boxed(std::optional<QString>()).isNil());
    EXPECT_TRUE(Boxed(std::optional<QByteArray>()).isNil());
    EXPECT_EQ(Boxed(std::optional<QString>(u"a"_s)), Boxed(u"a"_s));
    EXPECT_EQ(Boxed(std::optional<QByteArray>("a")), Boxed(QByteArray("a")));
}

TEST(Boxed, nilAnswersZeroToEverything) {
    EXPECT_EQ(Boxed().intValue(), 0);
    EXPECT_EQ(Boxed().shortValue(), 0);
    EXPECT_EQ(Boxed().longValue(), 0);
    EXPECT_EQ(Boxed().floatValue(), 0.0F);
    EXPECT_EQ(Boxed().doubleValue(), 0.0);
    EXPECT_FALSE(Boxed().boolValue());
}

TEST(Boxed, bytesDatesAndCollectionsAnswerZero) {
    for (const Boxed& value : {Boxed(QByteArray("12")), Boxed(QDateTime::currentDateTime()), Boxed(Boxed::Array{12}),
                               Boxed(Boxed::Dictionary{{u"a"_s, 12}})}) {
        EXPECT_EQ(value.longValue(), 0);
        EXPECT_EQ(value.doubleValue(), 0.0);
        EXPECT_EQ(value.floatValue(), 0.0F);
        EXPECT_FALSE(value.boolValue());
    }
}

TEST(Boxed, fractionsAreCutOffTowardsZero) {
    EXPECT_EQ(Boxed(2.7).intValue(), 2);
    EXPECT_EQ(Boxed(-2.7).intValue(), -2);
    EXPECT_EQ(Boxed(2.7F).longValue(), 2);
    EXPECT_EQ(Boxed(true).intValue(), 1);
}

TEST(Boxed, integersNarrowByTheirLowBits) {
    EXPECT_EQ(Boxed(65537).shortValue(), 1);
    EXPECT_EQ(Boxed(32768).shortValue(), -32768);
    EXPECT_EQ(Boxed(std::int64_t{1} << 32).intValue(), 0);
    EXPECT_EQ(Boxed((std::int64_t{1} << 32) + 5).intValue(), 5);
    EXPECT_EQ(Boxed(kLongMax).longValue(), kLongMax);
}

TEST(Boxed, realsOutsideTheIntegerRangeStopAtItsEnds) {
    EXPECT_EQ(Boxed(1e300).longValue(), kLongMax);
    EXPECT_EQ(Boxed(-1e300).longValue(), kLongMin);
    EXPECT_EQ(Boxed(9223372036854775807.0).longValue(), kLongMax);
    EXPECT_EQ(Boxed(std::numeric_limits<double>::quiet_NaN()).longValue(), 0);
}

TEST(Boxed, stringsAnswerTheNumberTheyBeginWith) {
    EXPECT_EQ(Boxed(u"12abc"_s).intValue(), 12);
    EXPECT_EQ(Boxed(u" \t-7"_s).intValue(), -7);
    EXPECT_EQ(Boxed(u"+7"_s).intValue(), 7);
    EXPECT_EQ(Boxed(u"+-7"_s).intValue(), 0);
    EXPECT_EQ(Boxed(u"abc"_s).intValue(), 0);
    EXPECT_EQ(Boxed(u""_s).intValue(), 0);
    EXPECT_EQ(Boxed(u"3.9"_s).intValue(), 3);
    EXPECT_EQ(Boxed(u"65537"_s).shortValue(), 1);
    EXPECT_EQ(Boxed(u"\u0661"_s).intValue(), 0);
}

TEST(Boxed, stringsOutsideTheRangeStopAtItsEnds) {
    EXPECT_EQ(Boxed(u"99999999999"_s).intValue(), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(Boxed(u"-99999999999"_s).intValue(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(Boxed(u"99999999999"_s).longValue(), 99999999999);
    EXPECT_EQ(Boxed(u"99999999999999999999"_s).longValue(), kLongMax);
    EXPECT_EQ(Boxed(u"-99999999999999999999"_s).longValue(), kLongMin);
}

TEST(Boxed, stringsAnswerReals) {
    EXPECT_EQ(Boxed(u" 1.5x"_s).doubleValue(), 1.5);
    EXPECT_EQ(Boxed(u"-.5"_s).doubleValue(), -0.5);
    EXPECT_EQ(Boxed(u"+2e3"_s).floatValue(), 2000.0F);
    EXPECT_EQ(Boxed(u"1,5"_s).doubleValue(), 1.0);
    EXPECT_EQ(Boxed(u"inf"_s).doubleValue(), 0.0);
    EXPECT_EQ(Boxed(u"nan"_s).doubleValue(), 0.0);
    EXPECT_EQ(Boxed(u"."_s).doubleValue(), 0.0);
    EXPECT_EQ(Boxed(u"1e999"_s).doubleValue(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Boxed(u"-1e999"_s).doubleValue(), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Boxed(u"1e-999"_s).doubleValue(), 0.0);
    const QString zeros(400, u'0');
    EXPECT_EQ(Boxed(u"1"_s + zeros).doubleValue(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Boxed(u"01"_s + zeros).doubleValue(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Boxed(u"0."_s + zeros + u'1').doubleValue(), 0.0);
    EXPECT_EQ(Boxed(u"-."_s + zeros + u'1').doubleValue(), 0.0);
}

TEST(Boxed, stringsAnswerTruth) {
    for (const QString& text : {u"YES"_s, u"yes"_s, u"True"_s, u"t"_s, u"1"_s, u"007"_s, u" -3"_s, u"+9"_s})
        EXPECT_TRUE(Boxed(text).boolValue()) << text.toStdString();
    for (const QString& text : {u"NO"_s, u"false"_s, u"0"_s, u"00"_s, u""_s, u" "_s, u"on"_s, u"--1"_s})
        EXPECT_FALSE(Boxed(text).boolValue()) << text.toStdString();
}

TEST(Boxed, numbersAnswerTruth) {
    EXPECT_TRUE(Boxed(true).boolValue());
    EXPECT_TRUE(Boxed(-1).boolValue());
    EXPECT_TRUE(Boxed(0.1).boolValue());
    EXPECT_FALSE(Boxed(0.0).boolValue());
    EXPECT_FALSE(Boxed(false).boolValue());
}

TEST(Boxed, valuesAnswerOnlyTheirOwnType) {
    EXPECT_EQ(Boxed(u"a"_s).string(), u"a"_s);
    EXPECT_FALSE(Boxed(u"a"_s).data());
    EXPECT_EQ(Boxed(QByteArray("a")).data(), QByteArray("a"));
    EXPECT_FALSE(Boxed(QByteArray("a")).string());
    EXPECT_FALSE(Boxed(1).string());
    const QDateTime date(QDate(2009, 3, 5), QTime(7, 4, 9));
    EXPECT_EQ(Boxed(date).date(), date);
    EXPECT_EQ(Boxed(Boxed::Array{1, u"a"_s}).array(), (Boxed::Array{1, u"a"_s}));
    EXPECT_EQ(Boxed(Boxed::Dictionary{{u"k"_s, 1}}).dictionary()->value(u"k"_s), Boxed(1));
}

TEST(Boxed, equalityLooksAtTheTypeToo) {
    EXPECT_EQ(Boxed(1), Boxed(std::int64_t{1}));
    EXPECT_NE(Boxed(1), Boxed(true));
    EXPECT_NE(Boxed(1), Boxed(1.0));
    EXPECT_NE(Boxed(1.0), Boxed(1.0F));
    EXPECT_NE(Boxed(u"1"_s), Boxed(1));
    EXPECT_EQ(Boxed(Boxed::Array{Boxed::Array{u"a"_s}}), Boxed(Boxed::Array{Boxed::Array{u"a"_s}}));
    EXPECT_NE(Boxed(Boxed::Array{Boxed::Array{u"a"_s}}), Boxed(Boxed::Array{Boxed::Array{u"b"_s}}));
}

TEST(Boxed, anObjectIsAValueThatEqualsOnlyItself) {
    const auto object = std::make_shared<const KVObject>();
    EXPECT_EQ(Boxed(object), Boxed(object));
    EXPECT_NE(Boxed(object), Boxed(std::make_shared<const KVObject>()));
    EXPECT_EQ(Boxed(object).object(), Boxed::Object(object));
    EXPECT_EQ(Boxed(object).longValue(), 0);
    EXPECT_TRUE(Boxed(Boxed::Object()).isNil());
}

} // namespace
} // namespace quillow
