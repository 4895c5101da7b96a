// Date tags in a text: which are replaced, by what, and which stay.
#include "util/MWDateTagElaborated.h"

#include "tests/fakes/FakeClock.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

class MWDateTagElaboratedTest : public testing::Test {
protected:
    QString expanded(const QString& text) const { return transformer_.transformedValue(text).string().value(); }

    FakeClock clock_; // 5 March 2009, 07:04:09
    MWDateTagElaborated transformer_{clock_};
};

TEST_F(MWDateTagElaboratedTest, isAStringTransformerOfOneWay) {
    EXPECT_EQ(transformer_.transformedValueClass(), ValueClass::string);
    EXPECT_FALSE(transformer_.allowsReverseTransformation());
    EXPECT_TRUE(transformer_.reverseTransformedValue(u"090305"_s).isNil());
}

TEST_F(MWDateTagElaboratedTest, nilAndNothingGiveTheEmptyString) {
    EXPECT_EQ(transformer_.transformedValue({}), Boxed(u""_s));
    EXPECT_EQ(transformer_.transformedValue(u""_s), Boxed(u""_s));
}

TEST_F(MWDateTagElaboratedTest, replacesEachTag) {
    EXPECT_EQ(expanded(u"<yy><mm><dd>-<hh><ii><ss>"_s), u"090305-070409"_s);
    EXPECT_EQ(expanded(u"<YY>"_s), u"2009"_s);
    clock_.set({QDate(2024, 12, 31), QTime(23, 59, 58)});
    EXPECT_EQ(expanded(u"<YY>/<yy>/<mm>/<dd> <hh>:<ii>:<ss>"_s), u"2024/24/12/31 23:59:58"_s);
}

TEST_F(MWDateTagElaboratedTest, twoDigitYearsKeepTheirZeros) {
    clock_.set({QDate(2100, 1, 1), QTime(0, 0)});
    EXPECT_EQ(expanded(u"<yy> <hh>"_s), u"00 00"_s);
    clock_.set({QDate(7, 1, 1), QTime(0, 0)});
    EXPECT_EQ(expanded(u"<yy> <YY>"_s), u"07 7"_s);
}

TEST_F(MWDateTagElaboratedTest, replacesEveryOccurrence) {
    EXPECT_EQ(expanded(u"<dd><dd> <dd>"_s), u"0505 05"_s);
}

TEST_F(MWDateTagElaboratedTest, leavesEverythingElse) {
    for (const auto& text : {u"<Yy>"_s, u"<yY>"_s, u"<MM>"_s, u"<DD>"_s, u"< yy>"_s, u"<yy"_s, u"yy>"_s, u"<>"_s,
                             u"<yyy>"_s, u"plain\n\ttext"_s, QString(QChar(0xD800))})
        EXPECT_EQ(expanded(text), text) << text.toStdString();
}

TEST_F(MWDateTagElaboratedTest, noReplacementFormsANewTag) {
    EXPECT_EQ(expanded(u"<<yy>>"_s), u"<09>"_s);
    EXPECT_EQ(expanded(u"<y<YY>y>"_s), u"<y2009y>"_s);
}

} // namespace
} // namespace quillow
