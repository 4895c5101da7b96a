// The text of values in a cell.
#include "util/exporter/ValueText.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <limits>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

TEST(TextOfValue, stringsStayAndNilIsEmpty) {
    EXPECT_EQ(textOfValue(u" a\t\"b\" "_s), u" a\t\"b\" "_s);
    EXPECT_EQ(textOfValue({}), u""_s);
}

TEST(TextOfValue, numbersAreShortAndExact) {
    EXPECT_EQ(textOfValue(true), u"1"_s);
    EXPECT_EQ(textOfValue(false), u"0"_s);
    EXPECT_EQ(textOfValue(-42), u"-42"_s);
    EXPECT_EQ(textOfValue(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808"_s);
    EXPECT_EQ(textOfValue(0.1), u"0.1"_s);
    EXPECT_EQ(textOfValue(0.1F), u"0.1"_s);
    EXPECT_EQ(textOfValue(2.0), u"2"_s);
    EXPECT_EQ(textOfValue(-1.5e300), u"-1.5e+300"_s);
    EXPECT_EQ(textOfValue(1.0 / 3), u"0.3333333333333333"_s);
}

TEST(TextOfValue, datesAreIso8601WithTheirOffset) {
    const QDateTime utc(QDate(2009, 3, 5), QTime(7, 4, 9, 500), QTimeZone(0));
    EXPECT_EQ(textOfValue(utc), u"2009-03-05T07:04:09Z"_s);
    EXPECT_EQ(textOfValue(utc.toOffsetFromUtc(5400)), u"2009-03-05T08:34:09+01:30"_s);
    EXPECT_EQ(textOfValue(QDateTime()), u""_s);
}

TEST(TextOfValue, bytesAreBase64AndImagesTheirSize) {
    EXPECT_EQ(textOfValue(QByteArray("foob")), u"Zm9vYg=="_s);
    EXPECT_EQ(textOfValue(Image{2, 1, QByteArray(8, '\0')}), u"2x1"_s);
}

TEST(TextOfValue, arraysAndDictionariesAreTheirValues) {
    EXPECT_EQ(textOfValue(Boxed::Array{u"a"_s, 1, Boxed(), true}), u"a, 1, , 1"_s);
    EXPECT_EQ(textOfValue(Boxed::Dictionary{{u"b"_s, 2}, {u"a"_s, Boxed::Array{1, 2}}}), u"a: 1, 2, b: 2"_s);
    EXPECT_EQ(textOfValue(Boxed::Array()), u""_s);
    EXPECT_EQ(textOfValue(Boxed::Array{Boxed::Array(), Boxed::Array()}), u", "_s);
}

TEST(TextOfValue, theDepthIsBounded) {
    Boxed nested = u"deep"_s;
    for (int i = 0; i < kMaximumDepthInCell; ++i)
        nested = Boxed::Array{nested};
    EXPECT_EQ(textOfValue(nested), u"deep"_s);
    EXPECT_EQ(textOfValue(Boxed::Array{nested}), u"\u2026"_s);
}

TEST(TextOfValue, arraysThatShareTheirElementsDoNotExplode) {
    Boxed shared = u"x"_s;
    for (int i = 0; i < kMaximumDepthInCell; ++i)
        shared = Boxed::Array(10, shared); // 10 to the 16th values
    const QString text = textOfValue(shared);
    EXPECT_TRUE(text.endsWith(u'\u2026'));
    EXPECT_LT(text.size(), 4 * kMaximumValuesInCell);
    EXPECT_EQ(textOfValue(Boxed::Array(kMaximumValuesInCell, u"x"_s)).count(u'x'), kMaximumValuesInCell);
    EXPECT_EQ(textOfValue(Boxed::Array(kMaximumValuesInCell + 5, u"x"_s)).right(4), u"x, \u2026"_s);
}

} // namespace
} // namespace quillow
