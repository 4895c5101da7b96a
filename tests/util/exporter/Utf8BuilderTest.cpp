#include "util/exporter/Utf8Builder.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <random>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

QByteArray built(const QStringList& pieces) {
    Utf8Builder builder;
    for (const QString& piece : pieces)
        builder.append(piece);
    return builder.take();
}

const QString kHigh(QChar(0xD83D));
const QString kLow(QChar(0xDE00));

TEST(Utf8Builder, encodesEveryLength) {
    const QString text = u"a\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010FFFF"_s;
    EXPECT_EQ(built({text}), text.toUtf8());
    EXPECT_EQ(built({}), QByteArray());
    EXPECT_EQ(built({QString(), u"\ufeff"_s}),
              QByteArray("\xEF\xBB\xBF")); // part of the text, not a byte-order mark of the file
}

TEST(Utf8Builder, aPairMayBeSplitBetweenPieces) {
    EXPECT_EQ(built({u"a"_s + kHigh, kLow + u"b"_s}), QByteArray("a\xF0\x9F\x98\x80"
                                                                 "b"));
    EXPECT_EQ(built({kHigh, QString(), kLow}), QByteArray("\xF0\x9F\x98\x80"));
}

TEST(Utf8Builder, loneSurrogatesBecomeTheReplacementCharacter) {
    const QByteArray lone("\xEF\xBF\xBD");
    EXPECT_EQ(built({kHigh}), lone);
    EXPECT_EQ(built({kLow}), lone);
    EXPECT_EQ(built({kHigh + kHigh + u"x"_s}), lone + lone + "x");
    EXPECT_EQ(built({kLow + kHigh}), lone + lone);
    EXPECT_EQ(built({kHigh, u"x"_s}), lone + "x");
}

TEST(Utf8Builder, takingStartsAnew) {
    Utf8Builder builder;
    builder.append(kHigh);
    EXPECT_EQ(builder.take(), QByteArray("\xEF\xBF\xBD"));
    builder.append(kLow);
    EXPECT_EQ(builder.take(), QByteArray("\xEF\xBF\xBD"));
}

TEST(Utf8Builder, piecesMakeNoDifference) {
    std::mt19937 random(3);
    const QList<char16_t> units{u'a', u'\u00e9', u'\u20ac', 0xD83D, 0xDE00, 0xDBFF, 0xDC00};
    for (int i = 0; i < 300; ++i) {
        QString whole;
        for (auto length = random() % 900; length > 0; --length)
            whole += QChar(units[static_cast<qsizetype>(random() % 7)]);
        QStringList pieces;
        for (qsizetype at = 0; at < whole.size();) {
            const auto length = static_cast<qsizetype>(random() % 300);
            pieces.append(whole.mid(at, length));
            at += length;
        }
        ASSERT_EQ(built(pieces), built({whole}));
    }
}

} // namespace
} // namespace quillow
