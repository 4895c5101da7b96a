// Strings out of keyed archives.
#include "platform/qt/QtTextUnarchiver.h"

#include "tests/platform/BinaryListWriter.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using Dictionary = Boxed::Dictionary;

/// An archive as an independent writer (Python's plistlib) made it.
const QByteArray kArchivedText = QByteArray::fromHex(
    "62706c6973743030d401020304050614175924617263686976657258246f626a656374735424746f7058247665727369"
    "6f6e5f100f4e534b657965644172636869766572a407080d0e55246e756c6cd2090a0b0c5624636c617373584e535374"
    "72696e6780038002680047007200fc00df00650020d83dde00d20f1011125824636c61737365735a24636c6173736e61"
    "6d65a212135f10124e5341747472696275746564537472696e67584e534f626a656374d1151654726f6f748001120001"
    "86a008111b24293244494f545b646668797e879295aab3b6bbbd00000000000001010000000000000018000000000000"
    "000000000000000000c2");

Boxed uid(int number) {
    return Dictionary{{QStringLiteral("CF$UID"), number}};
}
Boxed classOf(const QString& name, const QString& base) {
    return Dictionary{{QStringLiteral("$classname"), name},
                      {QStringLiteral("$classes"), Boxed::Array{name, base, QStringLiteral("NSObject")}}};
}
Boxed textObject(const Boxed& string) {
    return Dictionary{{QStringLiteral("$class"), uid(2)}, {QStringLiteral("NSString"), string}};
}
Boxed stringObject(const Boxed& characters) {
    return Dictionary{{QStringLiteral("$class"), uid(4)}, {QStringLiteral("NS.string"), characters}};
}

/// Object 1 is the root, 2 the styled text's class, 3 what the test wants, 4 the class of strings.
Dictionary archive(const Boxed& root, const Boxed& third = QStringLiteral("text"),
                   const QString& textClass = QStringLiteral("NSAttributedString")) {
    return {{QStringLiteral("$archiver"), QStringLiteral("NSKeyedArchiver")},
            {QStringLiteral("$version"), 100000},
            {QStringLiteral("$top"), Dictionary{{QStringLiteral("root"), uid(1)}}},
            {QStringLiteral("$objects"),
             Boxed::Array{QStringLiteral("$null"), root, classOf(QStringLiteral("NSMutable"), textClass), third,
                          classOf(QStringLiteral("NSMutableString"), QStringLiteral("NSString"))}}};
}

std::optional<QString> textOf(const Dictionary& archive) {
    BinaryListWriter writer;
    writer.addValue(archive);
    return QtTextUnarchiver().stringOfArchivedText(writer.list());
}

TEST(QtTextUnarchiver, readsStyledText) {
    EXPECT_EQ(QtTextUnarchiver().stringOfArchivedText(kArchivedText), QStringLiteral("Gr\u00FC\u00DFe \U0001F600"));
}

TEST(QtTextUnarchiver, readsStyledTextOfADerivedClass) {
    EXPECT_EQ(textOf(archive(textObject(uid(3)))), QStringLiteral("text"));
}

TEST(QtTextUnarchiver, readsAPlainStringAsRoot) {
    EXPECT_EQ(textOf(archive(QStringLiteral("plain"))), QStringLiteral("plain"));
    EXPECT_EQ(textOf(archive(QString(QLatin1String("")))), QString(QLatin1String("")));
    EXPECT_EQ(textOf(archive(stringObject(QStringLiteral("mutable")))), QStringLiteral("mutable"));
}

TEST(QtTextUnarchiver, readsStringObjects) {
    EXPECT_EQ(textOf(archive(textObject(uid(3)), stringObject(QStringLiteral("mutable")))), QStringLiteral("mutable"));
}

TEST(QtTextUnarchiver, answersNothingForAnythingElse) {
    const QtTextUnarchiver unarchiver;
    EXPECT_EQ(unarchiver.stringOfArchivedText(""), std::nullopt);
    EXPECT_EQ(unarchiver.stringOfArchivedText("text"), std::nullopt);
    EXPECT_EQ(unarchiver.stringOfArchivedText(listOf(BinaryListWriter::ascii("text"))), std::nullopt);
    for (const char16_t* key : {u"$archiver", u"$objects", u"$top"}) {
        Dictionary list = archive(textObject(uid(3)));
        list.remove(QString::fromUtf16(key));
        EXPECT_EQ(textOf(list), std::nullopt) << QString::fromUtf16(key).toStdString();
        list.insert(QString::fromUtf16(key), 1);
        EXPECT_EQ(textOf(list), std::nullopt) << QString::fromUtf16(key).toStdString();
    }
    EXPECT_EQ(textOf(archive(7)), std::nullopt);
    EXPECT_EQ(textOf(archive(QStringLiteral("$null"))), std::nullopt);
    EXPECT_EQ(textOf(archive(Boxed::Array{QStringLiteral("text")})), std::nullopt);
    EXPECT_EQ(textOf(archive(textObject(QStringLiteral("no reference")))), std::nullopt);
    EXPECT_EQ(textOf(archive(textObject(uid(0)))), std::nullopt);
    EXPECT_EQ(textOf(archive(textObject(uid(5)))), std::nullopt);
    EXPECT_EQ(textOf(archive(textObject(uid(3)), 7)), std::nullopt);
    EXPECT_EQ(textOf(archive(textObject(uid(3)), QStringLiteral("text"), QStringLiteral("NSData"))), std::nullopt);
    EXPECT_EQ(textOf(archive(Dictionary{{QStringLiteral("NSString"), uid(3)}})), std::nullopt);
}

TEST(QtTextUnarchiver, referencesInACircleEnd) {
    EXPECT_EQ(textOf(archive(uid(1))), std::nullopt);
    EXPECT_EQ(textOf(archive(textObject(uid(1)))), std::nullopt);
    EXPECT_EQ(textOf(archive(textObject(uid(3)), stringObject(uid(3)))), std::nullopt);
    EXPECT_EQ(textOf(archive(Dictionary{{QStringLiteral("$class"), uid(1)}, {QStringLiteral("NSString"), uid(1)}})),
              std::nullopt);
}

TEST(QtTextUnarchiver, anArchiveCutOffAnywhereIsNone) {
    for (qsizetype length = 0; length < kArchivedText.size(); ++length)
        EXPECT_EQ(QtTextUnarchiver().stringOfArchivedText(kArchivedText.left(length)), std::nullopt) << length;
}

} // namespace
} // namespace quillow
