// Strings from keyed and unkeyed archives.
#include "platform/qt/storage/QtTextUnarchiver.h"

#include "tests/platform/BinaryListWriter.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using Dictionary = Boxed::Dictionary;

/// An archive written by an independent writer (Python's plistlib).
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

/// Object 1 is the root, 2 the class of the styled text, 3 the object that the test sets, 4 the class of strings.
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

// The unkeyed form, written by hand.

QByteArray counted(const QByteArray& bytes) {
    return char(bytes.size()) + bytes;
}
QByteArray newName(const QByteArray& name) {
    return "\x84" + counted(name);
}
QByteArray newClass(const QByteArray& name, char version = 0) {
    return "\x84" + newName(name) + version;
}
const QByteArray kHeader = "\x04" + counted("streamtyped") + "\x81\xE8\x03";
const QByteArray kNewObject = "\x84";
const QByteArray kNoClassAbove = "\x85";
const QByteArray kEnd = "\x86";
/// A reference to an earlier name or object by its number, from 0.
QByteArray number(int index) {
    return QByteArray(1, static_cast<char>(index - 110));
}

const QByteArray kUnkeyedString = kHeader + newName("@") + kNewObject + newClass("NSMutableString", 1) +
                                  newClass("NSString", 1) + newClass("NSObject") + kNoClassAbove + newName("+") +
                                  counted("Gr\xC3\xBC\xC3\x9F"
                                          "e \xF0\x9F\x98\x80") +
                                  kEnd;
/// Names 0 to 2: "@" and the root's two classes. Objects 0 to 2: the root and its classes.
const QByteArray kStyledBeginning =
    kHeader + newName("@") + kNewObject + newClass("NSAttributedString") + newClass("NSObject") + kNoClassAbove;
const QByteArray kUnkeyedStyledText = kStyledBeginning + number(0) + kNewObject + newClass("NSString", 1) + number(2) +
                                      newName("+") + counted("styled") + kEnd + "attributes and whatever else";

std::optional<QString> unkeyed(const QByteArray& archive) {
    return QtTextUnarchiver().stringOfArchivedText(archive);
}

TEST(UnkeyedArchive, readsAPlainString) {
    EXPECT_EQ(unkeyed(kUnkeyedString), QStringLiteral("Gr\u00FC\u00DFe \U0001F600"));
}

TEST(UnkeyedArchive, readsTheCharactersOfStyledText) {
    EXPECT_EQ(unkeyed(kUnkeyedStyledText), QStringLiteral("styled"));
}

TEST(UnkeyedArchive, readsLongStringsInBothOrdersOfBytes) {
    const QByteArray text(300, 'x');
    const QByteArray root = newName("@") + kNewObject + newClass("NSString", 1) + kNoClassAbove + newName("+");
    const QByteArray bigHeader = "\x04" + counted("typedstream") + "\x81\x03\xE8";
    EXPECT_EQ(unkeyed(kHeader + root + "\x81\x2C\x01" + text + kEnd), QString::fromLatin1(text));
    EXPECT_EQ(unkeyed(bigHeader + root + "\x81\x01\x2C" + text + kEnd), QString::fromLatin1(text));
    EXPECT_EQ(unkeyed(kHeader + root + QByteArray("\x82\x2C\x01\0\0", 5) + text + kEnd), QString::fromLatin1(text));
    EXPECT_EQ(unkeyed(bigHeader + root + QByteArray("\x82\0\0\x01\x2C", 5) + text + kEnd), QString::fromLatin1(text));
    EXPECT_EQ(unkeyed(kHeader + root + QByteArray("\x82\xFF\xFF\xFF\xFF", 5) + text + kEnd), std::nullopt);
}

TEST(UnkeyedArchive, keepsAnEmptyStringAndALeadingByteOrderMark) {
    const QByteArray root =
        kHeader + newName("@") + kNewObject + newClass("NSString", 1) + kNoClassAbove + newName("+");
    EXPECT_EQ(unkeyed(root + counted("") + kEnd), QString(QLatin1String("")));
    EXPECT_EQ(unkeyed(root + counted("\xEF\xBB\xBFx") + kEnd), QStringLiteral("\uFEFFx"));
}

TEST(UnkeyedArchive, namesWhatWasWrittenBeforeByItsNumberHoweverManyThereAre) {
    // The string's class has number 299, after the root, its class and 297 others.
    QByteArray archive = kHeader + newName("@") + kNewObject + newClass("NSAttributedString");
    for (int i = 0; i < 297; ++i)
        archive += newClass("A");
    archive += newClass("NSString", 1) + kNoClassAbove + number(0) + kNewObject;
    const QByteArray characters = newName("+") + counted("far") + kEnd;
    EXPECT_EQ(unkeyed(archive + QByteArray("\x81\xBD\0", 3) + characters), QStringLiteral("far")) << "299 - 110";
    EXPECT_EQ(unkeyed(archive + QByteArray("\x82\xBD\0\0\0", 5) + characters), QStringLiteral("far"));
    EXPECT_EQ(unkeyed(archive + QByteArray("\x81\xBF\0", 3) + characters), std::nullopt) << "not written yet";
}

TEST(UnkeyedArchive, answersNothingForOtherRoots) {
    const QByteArray string = newClass("NSString", 1) + kNoClassAbove;
    const QByteArray characters = newName("+") + counted("x") + kEnd;
    const QByteArray type = kHeader + newName("@");
    ASSERT_TRUE(unkeyed(type + kNewObject + string + characters).has_value());
    EXPECT_EQ(unkeyed(type + kNewObject + newClass("NSData") + kNoClassAbove + characters), std::nullopt);
    EXPECT_EQ(unkeyed(type + "\x85"), std::nullopt) << "nil";
    EXPECT_EQ(unkeyed(type + kNewObject + kNoClassAbove + characters), std::nullopt) << "no class";
    EXPECT_EQ(unkeyed(type + kNewObject + number(1) + characters), std::nullopt) << "an object as class";
    EXPECT_EQ(unkeyed(type + kNewObject + newClass("NSString", 1) + number(1) + characters), std::nullopt)
        << "a class above itself";
    EXPECT_EQ(unkeyed(type + kNewObject + string + newName("i") + counted("x") + kEnd), std::nullopt) << "an integer";
    EXPECT_EQ(unkeyed(type + kNewObject + string + newName("+") + counted("x") + "\x85"), std::nullopt) << "no end";
    EXPECT_EQ(unkeyed(type + kNewObject + string + newName("+") + counted("\xFF") + kEnd), std::nullopt) << "no UTF-8";
    EXPECT_EQ(unkeyed(kHeader + newName("*") + kNewObject + string + characters), std::nullopt);
    EXPECT_EQ(unkeyed(kStyledBeginning + number(0) + kNewObject + number(1) + characters), std::nullopt)
        << "styled text within styled text";
}

TEST(UnkeyedArchive, cutOffAnywhereIsNone) {
    for (qsizetype length = 0; length < kUnkeyedString.size(); ++length) {
        // The rest still follows in memory, so a read beyond the end would find it.
        EXPECT_EQ(unkeyed(QByteArray::fromRawData(kUnkeyedString.constData(), length)), std::nullopt) << length;
    }
}

TEST(UnkeyedArchive, noChangedByteIsTooMuchForIt) {
    for (const QByteArray& archive : {kUnkeyedString, kUnkeyedStyledText}) {
        for (qsizetype at = 0; at < archive.size(); ++at) {
            for (int byte = 0; byte < 256; ++byte) {
                QByteArray changed = archive;
                changed[at] = static_cast<char>(byte);
                const auto text = unkeyed(changed);
                EXPECT_TRUE(!text || text->size() <= archive.size());
            }
        }
    }
}

} // namespace
} // namespace quillow
