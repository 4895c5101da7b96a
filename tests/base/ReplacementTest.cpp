#include "base/Replacement.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

TEST(StringByReplacingOccurrences, goesOnceFromLeftToRight) {
    EXPECT_EQ(stringByReplacingOccurrences(u"aaa"_s, u"aa", u"b"), u"ba"_s);
    EXPECT_EQ(stringByReplacingOccurrences(u"a  b"_s, u" ", u"  "), u"a    b"_s);
    // Text that a replacement forms with its neighbours is not searched again.
    EXPECT_EQ(stringByReplacingOccurrences(u" \t\t"_s, u" \t", u" "), u" \t"_s);
    EXPECT_EQ(stringByReplacingOccurrences(u"abc"_s, u"abc", u""), u""_s);
}

TEST(StringByReplacingOccurrences, caseCountsAndNothingFoundChangesNothing) {
    EXPECT_EQ(stringByReplacingOccurrences(u"abc"_s, u"B", u"x"), u"abc"_s);
    EXPECT_EQ(stringByReplacingOccurrences(QString(), u"b", u"x"), QString());
}

TEST(StringByReplacingOccurrences, agreesWithQtOnManyOccurrences) {
    QString text;
    for (int i = 0; i < 5000; ++i)
        text += QString::number(i) + u"<yy>"_s;
    QString expected = text;
    expected.replace(u"<yy>"_s, u"09"_s);
    EXPECT_EQ(stringByReplacingOccurrences(text, u"<yy>", u"09"), expected);
}

} // namespace
} // namespace quillow
