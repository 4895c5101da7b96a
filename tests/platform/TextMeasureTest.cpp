// The contract of the text measure port. Also, cutting a text with Qt's widths must give the result of the loop that
// defines it.
#include "platform/qt/services/QtTextMeasure.h"
#include "tests/fakes/FakeTextMeasure.h"
#include "util/TextFitting.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

template <class Measure>
class TextMeasureContract : public testing::Test {
protected:
    double width(const QString& text) const { return measure_.width(text, {}); }
    Measure measure_;
};
using Measures = testing::Types<FakeTextMeasure, QtTextMeasure>;
TYPED_TEST_SUITE(TextMeasureContract, Measures);

TYPED_TEST(TextMeasureContract, nothingIsNotWide) {
    EXPECT_EQ(this->width(QString()), 0);
}

TYPED_TEST(TextMeasureContract, moreTextIsWider) {
    EXPECT_GT(this->width(u"a"_s), 0);
    EXPECT_GT(this->width(u"aaaa"_s), this->width(u"aaa"_s));
}

TYPED_TEST(TextMeasureContract, noTextIsMuchNarrowerThanABeginningOfIt) {
    const double seam = TextFitting::kSeam * this->width(u"M"_s);
    for (const QString& text :
         {u"AVAVA To. office ffi ffl"_s, u"\u0627\u0644\u0633\u0644\u0627\u0645 \u0639\u0644\u064a\u0643\u0645"_s,
          u"\u0e01\u0e33 \u0928\u092e\u0938\u094d\u0924\u0947"_s, u"e\u0301\u0302\u0303"_s,
          u"\U0001F468\u200d\U0001F469\u200d\U0001F467"_s, u"a\tb"_s}) {
        double widest = 0;
        for (qsizetype length = 0; length <= text.size(); ++length) {
            const double beginning = this->width(text.left(length));
            EXPECT_GE(beginning, widest - seam) << text.toStdString() << ' ' << length;
            widest = std::max(widest, beginning);
        }
    }
}

TEST(QtTextMeasure, theWidestOfSeveralLinesCounts) {
    const QtTextMeasure measure;
    const double wide = measure.width(u"a wide line"_s, {});
    EXPECT_EQ(measure.width(u"a\na wide line\r\nb\u2028c\u2029"_s, {}), wide);
}

TEST(QtTextMeasure, attributesCount) {
    const QtTextMeasure measure;
    TextAttributes large;
    large.fontSize = 40;
    TextAttributes bold = large;
    bold.isBold = true;
    EXPECT_GT(measure.width(u"text"_s, large), 2 * measure.width(u"text"_s, {{}, 12, false, false}));
    EXPECT_GT(measure.width(u"text"_s, bold), measure.width(u"text"_s, large));
}

TEST(QtTextMeasure, cuttingFollowsTheLoop) {
    const QtTextMeasure measure;
    const TextAttributes attributes;
    const QString texts[] = {QString(40, u'W') + QString(300, u'i'), u"AVAVAVA Tofu, office; "_s.repeated(20),
                             u"\u0627\u0644\u0633\u0644\u0627\u0645 \u0639\u0644\u064a\u0643\u0645 "_s.repeated(12),
                             u"\U0001F468\u200d\U0001F469\u200d\U0001F467 x"_s.repeated(20)};
    for (const QString& text : texts) {
        for (const std::int32_t limit : {-1, 0, 20, 77, 300}) {
            QString byLoop = text;
            while (measure.width(byLoop + u".."_s, attributes) > limit && byLoop.size() >= 2)
                byLoop.chop(1);
            EXPECT_EQ(TextFitting(measure, attributes, limit).fitted(text), byLoop + u".."_s) << limit;
        }
    }
}

TEST(QtTextMeasure, aTextOfMillionsOfUnitsIsCut) {
    const QtTextMeasure measure;
    const TextAttributes attributes;
    const QString cut = TextFitting(measure, attributes, 300).fitted(QString(5'000'000, u'x'));
    EXPECT_TRUE(cut.endsWith(u"x.."_s));
    EXPECT_LE(measure.width(cut, attributes), 300);
    EXPECT_GT(measure.width(u'x' + cut, attributes), 300);
}

} // namespace
} // namespace quillow
