#include "base/Format.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

TEST(Format, fillsBlanksInOrder) {
    EXPECT_EQ(stringWithFormat(u"Converted %@  >>  %@"_s, {u"a"_s, u"b"_s}), u"Converted a  >>  b"_s);
    EXPECT_EQ(stringWithFormat(u"%@"_s, {u"a"_s}), u"a"_s);
    EXPECT_EQ(stringWithFormat(u"none"_s, {}), u"none"_s);
}

TEST(Format, argumentsThatLookLikeBlanksStayAsTheyAre) {
    EXPECT_EQ(stringWithFormat(u"%@/%@"_s, {u"/a %@ %1"_s, u"%2 %@.txt"_s}), u"/a %@ %1/%2 %@.txt"_s);
    EXPECT_EQ(stringWithFormat(u"100% %@"_s, {u"%"_s}), u"100% %"_s);
}

TEST(Format, nilReadsNullAndEmptyStaysEmpty) {
    EXPECT_EQ(stringWithFormat(u"[%@] [%@]"_s, {std::nullopt, u""_s}), u"[(null)] []"_s);
}

} // namespace
} // namespace quillow
