// Base64: the vectors of RFC 4648, section 10, rejected input, and the execution of transforms.
#include "util/Base64Transforms.h"
#include "util/NSDataBase64.h"

#include <gtest/gtest.h>

#include <random>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;
using namespace NSDataBase64;

struct Pair {
    const char* bytes;
    const char16_t* text;
};
constexpr Pair kVectors[] = {{"", u""},
                             {"f", u"Zg=="},
                             {"fo", u"Zm8="},
                             {"foo", u"Zm9v"},
                             {"foob", u"Zm9vYg=="},
                             {"fooba", u"Zm9vYmE="},
                             {"foobar", u"Zm9vYmFy"}};

TEST(Base64, encodesTheStandardsVectors) {
    for (const auto& [bytes, text] : kVectors) {
        EXPECT_EQ(base64enc(bytes), QString::fromUtf16(text));
        EXPECT_EQ(base64EncodedString(bytes), QString::fromUtf16(text));
    }
}

TEST(Base64, everyDecoderDecodesTheOneNamedEncToo) {
    for (const auto& [bytes, utf16] : kVectors) {
        const QString text = QString::fromUtf16(utf16);
        EXPECT_EQ(base64dec(text), QByteArray(bytes));
        EXPECT_EQ(dataBase64enc(text), QByteArray(bytes));
        EXPECT_EQ(dataFromBase64String(text), QByteArray(bytes));
        EXPECT_EQ(dataWithBase64EncodedString(text), QByteArray(bytes));
    }
}

TEST(Base64, longTextIsOneLine) {
    const auto text = base64enc(QByteArray(10000, 'x'));
    ASSERT_TRUE(text);
    EXPECT_EQ(text->size(), 13336);
    EXPECT_FALSE(text->contains(u'\n'));
}

TEST(Base64, lineEndsAreSkippedWhereverTheyStand) {
    EXPECT_EQ(base64dec(u"Zm9v\nYmFy"_s), QByteArray("foobar"));
    EXPECT_EQ(base64dec(u"\r\nZ\nm\r9v\r\nYg=\n=\r\n"_s), QByteArray("foob"));
    EXPECT_EQ(base64dec(u"\n"_s), QByteArray(""));
}

TEST(Base64, whatIsNotCanonicalGivesNothing) {
    for (const auto& text :
         {u"Zg"_s, u"Zg="_s, u"Zg==="_s, u"Z"_s, u"="_s, u"===="_s, u"Z==="_s, u"Zg==Zg=="_s, u"=Zg="_s, u"Zm9v=A=="_s,
          u"Zm 9"_s, u"Zm9v "_s, u"Zm\t9"_s, u"Zm-_"_s, u"Zm9*"_s, u"Zm9\u0000"_s, u"Zh=="_s, u"Zm9="_s})
        EXPECT_FALSE(base64dec(text)) << text.toStdString();
}

TEST(Base64, onlyTheAlphabetsCharactersAreDecoded) {
    const QString alphabet = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"_s;
    for (char16_t unit = 0; unit < 0x80; ++unit) {
        const QString text = QString(QChar(unit)) + u"AAA"_s;
        const bool isLineEnd = unit == u'\r' || unit == u'\n'; // dropped, and three characters are no group
        EXPECT_EQ(base64dec(text).has_value(), alphabet.contains(unit) && !isLineEnd) << int{unit};
    }
}

TEST(Base64, nilAndWhatIsNotAsciiGiveNothing) {
    EXPECT_FALSE(base64dec(std::nullopt));
    EXPECT_FALSE(dataFromBase64String(std::nullopt));
    EXPECT_FALSE(base64dec(u"Zm9\u00e9"_s));
    EXPECT_FALSE(base64dec(u"\uff3am9v"_s)); // a full-width Z
    EXPECT_FALSE(base64dec(QString(QChar(0xD800)) + u"m9v"_s));
    EXPECT_FALSE(base64dec(QString(QChar(0x015A)) + u"g=="_s)); // its low byte is Z
}

TEST(Base64, decodingTakesEncodingBackForAnyBytes) {
    std::mt19937 random(1);
    for (int length = 0; length < 300; ++length) {
        QByteArray bytes(length, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random() & 0xFF);
        const auto text = base64enc(bytes);
        ASSERT_TRUE(text);
        EXPECT_EQ(text->size(), (length + 2) / 3 * 4);
        EXPECT_EQ(base64dec(text), bytes);
    }
}

TEST(Base64, whatIsTakenIsTheOnlyTextOfItsBytes) {
    std::mt19937 random(2);
    const QString alphabet = u"AQgwZz09+/=\n"_s;
    int taken = 0;
    for (int i = 0; i < 20000; ++i) {
        QString text;
        for (int unit = 0; unit < 8; ++unit)
            text += alphabet[static_cast<qsizetype>(random() % 12)];
        const auto bytes = base64dec(text);
        if (!bytes) continue;
        ++taken;
        EXPECT_EQ(base64enc(*bytes), text.remove(u'\n'));
    }
    EXPECT_GT(taken, 1000);
}

class ScriptedTransform final : public SecTransform {
public:
    explicit ScriptedTransform(bool takesInput)
        : takesInput_(takesInput) {}
    bool setAttribute(const char16_t* name, const QByteArray& value) override {
        EXPECT_STREQ(QString::fromUtf16(name).toUtf8(), QString::fromUtf16(kSecTransformInputAttributeName).toUtf8());
        input = value;
        return takesInput_;
    }
    std::optional<QByteArray> execute() override {
        ++executions;
        return output;
    }

    QByteArray input;
    std::optional<QByteArray> output = QByteArray("output");
    int executions = 0;

private:
    bool takesInput_;
};

TEST(TransformExecuter, executesATransformThatTookItsInput) {
    ScriptedTransform transform(true);
    EXPECT_EQ(transformExecuter(QByteArray("input"), &transform), QByteArray("output"));
    EXPECT_EQ(transform.input, QByteArray("input"));
    EXPECT_EQ(transform.executions, 1);
}

TEST(TransformExecuter, answersNothingWithoutATransformAnInputOrAnOutput) {
    EXPECT_FALSE(transformExecuter(QByteArray("input"), nullptr));
    ScriptedTransform refuses(false);
    EXPECT_FALSE(transformExecuter(QByteArray("input"), &refuses));
    EXPECT_EQ(refuses.executions, 0);
    ScriptedTransform fails(true);
    fails.output.reset();
    EXPECT_FALSE(transformExecuter(QByteArray("input"), &fails));
    ScriptedTransform unused(true);
    EXPECT_FALSE(transformExecuter(std::nullopt, &unused));
    EXPECT_EQ(unused.executions, 0);
}

TEST(Base64Transforms, takeOneAttributeAndNeedIt) {
    for (const auto& transform : {makeBase64EncodeTransform(), makeBase64DecodeTransform()}) {
        EXPECT_FALSE(transform->execute());
        EXPECT_FALSE(transform->setAttribute(u"line length", "76"));
        EXPECT_FALSE(transform->execute());
        EXPECT_TRUE(transform->setAttribute(kSecTransformInputAttributeName, ""));
        EXPECT_EQ(transform->execute(), QByteArray(""));
    }
}

} // namespace
} // namespace quillow
