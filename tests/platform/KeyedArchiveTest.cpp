// Keyed archives: the reader reads archives of our writer and of others, and damaged archives do no harm.
#include "platform/qt/plist/KeyedArchive.h"

#include "platform/qt/plist/PropertyList.h"
#include "tests/platform/BinaryListWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;
using Dictionary = Boxed::Dictionary;
using Array = Boxed::Array;

/// An archive by an independent writer (Python's plistlib), with the root "appversion" 10501, "logContent" a mutable
/// string, "bigWin" true.
const QByteArray kArchive = QByteArray::fromHex(
    "62706c6973743030d40102030405062a2d5924617263686976657258246f626a656374735424746f7058247665727369"
    "6f6e5f100f4e534b657965644172636869766572ab070815161718191d24252655246e756c6cd3090a0b0c0d11562463"
    "6c617373574e532e6b6579735a4e532e6f626a65637473800aa30e0f10800280038004a31213148005800680085a6170"
    "7076657273696f6e5a6c6f67436f6e74656e745662696757696e112905d2091a1b1c594e532e737472696e6780076f10"
    "11000a004e006f0076002000320031007d00200047007200fc00df00650020d83dde00d21e1f20215824636c61737365"
    "735a24636c6173736e616d65a32122235f100f4e534d757461626c65537472696e67584e53537472696e67584e534f62"
    "6a6563740956756e75736564d21e1f2728a32829235f10134e534d757461626c6544696374696f6e6172795c4e534469"
    "6374696f6e617279d12b2c54726f6f74800112000186a000080011001b002400290032004400500056005d0064006c00"
    "770079007d007f0081008300870089008b008d009800a300aa00ad00b200bc00be00e300e800f100fc01000112011b01"
    "240125012c01310135014b0158015b016001620000000000000201000000000000002e00000000000000000000000000"
    "000167");

std::optional<Boxed> rootOf(const QByteArray& bytes) {
    const auto archive = KeyedArchive::fromData(bytes);
    return archive ? archive->valueOf(archive->root()) : std::nullopt;
}

std::optional<Boxed> writtenAndRead(const Boxed& root) {
    const auto bytes = archivedData(root);
    return bytes ? rootOf(*bytes) : std::nullopt;
}

Boxed classOf(const QString& name) {
    return Dictionary{{u"$classname"_s, name}, {u"$classes"_s, Array{name, u"NSObject"_s}}};
}

/// An archive of these objects. The first is the root and has number 1.
Dictionary archiveOf(const Array& objects) {
    Array table{u"$null"_s};
    table += objects;
    return {{u"$archiver"_s, u"NSKeyedArchiver"_s},
            {u"$version"_s, 100000},
            {u"$top"_s, Dictionary{{u"root"_s, uniqueIdentifier(1)}}},
            {u"$objects"_s, table}};
}

std::optional<Boxed> rootOf(const Dictionary& archive) {
    BinaryListWriter writer;
    writer.addValue(archive);
    return rootOf(writer.list());
}

Boxed arrayObject(const Array& elements) {
    return Dictionary{{u"$class"_s, uniqueIdentifier(2)}, {u"NS.objects"_s, elements}};
}

Boxed dictionaryObject(const Boxed& keys, const Boxed& values) {
    return Dictionary{{u"$class"_s, uniqueIdentifier(2)}, {u"NS.keys"_s, keys}, {u"NS.objects"_s, values}};
}

TEST(KeyedArchive, everyKindOfValueComesBackWithItsType) {
    const Dictionary root{{u"true"_s, true},
                          {u"false"_s, false},
                          {u"small"_s, 7},
                          {u"byte"_s, 255},
                          {u"word"_s, 65536},
                          {u"wide"_s, std::int64_t{1} << 40},
                          {u"largest"_s, std::numeric_limits<std::int64_t>::max()},
                          {u"least"_s, std::numeric_limits<std::int64_t>::min()},
                          {u"negative"_s, -1},
                          {u"double"_s, 2.75},
                          {u"float"_s, 2.5F},
                          {u"infinite"_s, std::numeric_limits<double>::infinity()},
                          {u"text"_s, u"text"_s},
                          {u"empty"_s, u""_s},
                          {u"null"_s, u"$null"_s},
                          {u"bytes"_s, QByteArray("\0\xFF", 2)},
                          {u"noBytes"_s, QByteArray("")},
                          {u"date"_s, QDateTime::fromMSecsSinceEpoch(1795000000123, Qt::UTC)},
                          {u"array"_s, Array{1, u"two"_s, Array{}, Dictionary{}}},
                          {u"dictionary"_s, Dictionary{{u"CF$UID"_s, 1}}},
                          {u"nil"_s, nullptr}};
    EXPECT_EQ(writtenAndRead(root), Boxed(root));
}

TEST(KeyedArchive, rootsOfOtherKindsComeBack) {
    for (const Boxed& root :
         {Boxed(u"text"_s), Boxed(u"$null"_s), Boxed(7), Boxed(true), Boxed(Array{}), Boxed(Dictionary{})})
        EXPECT_EQ(writtenAndRead(root), root);
}

TEST(KeyedArchive, textsKeepEveryUnit) {
    const QString strange =
        u"\n\0\r\u00A0\u202F\u2028\uFFFF\U0001F600"_s + QChar(0xD800) + u"x"_s + QChar(0xDC00) + QChar(0xFFFE);
    EXPECT_EQ(writtenAndRead(strange), Boxed(strange));
    for (const qsizetype length : {14, 15, 16, 255, 256, 65535, 65536}) {
        EXPECT_EQ(writtenAndRead(QString(length, u'a')), Boxed(QString(length, u'a')));
        EXPECT_EQ(writtenAndRead(QString(length, u'\u00E9')), Boxed(QString(length, u'\u00E9')));
    }
}

TEST(KeyedArchive, largeTextsTakeTheirOwnSizeAndNoMore) {
    const QString ascii(20'000'000, u'a');
    const auto bytes = archivedData(Dictionary{{u"logContent"_s, ascii}});
    ASSERT_TRUE(bytes);
    EXPECT_LT(bytes->size(), ascii.size() + 1000);
    EXPECT_EQ(rootOf(*bytes), Boxed(Dictionary{{u"logContent"_s, ascii}}));
    const QString wide(10'000'000, u'\u6587');
    EXPECT_LT(archivedData(wide)->size(), 2 * wide.size() + 1000);
    EXPECT_EQ(writtenAndRead(wide), Boxed(wide));
}

TEST(KeyedArchive, manyObjectsComeBack) {
    Array numbers;
    for (int i = 0; i < 30000; ++i)
        numbers.append(i);
    EXPECT_EQ(writtenAndRead(numbers), Boxed(numbers));
}

TEST(KeyedArchive, hasTheFormOfTheFormat) {
    const auto bytes = archivedData(Dictionary{{u"appversion"_s, 10501}});
    ASSERT_TRUE(bytes);
    EXPECT_TRUE(bytes->startsWith("bplist00"));
    const Dictionary expected{{u"$archiver"_s, u"NSKeyedArchiver"_s},
                              {u"$version"_s, 100000},
                              {u"$top"_s, Dictionary{{u"root"_s, uniqueIdentifier(1)}}},
                              {u"$objects"_s, Array{u"$null"_s,
                                                    Dictionary{{u"$class"_s, uniqueIdentifier(4)},
                                                               {u"NS.keys"_s, Array{uniqueIdentifier(2)}},
                                                               {u"NS.objects"_s, Array{uniqueIdentifier(3)}}},
                                                    u"appversion"_s, 10501, classOf(u"NSDictionary"_s)}}};
    EXPECT_EQ(propertyListFromData(*bytes), Boxed(expected));
}

TEST(KeyedArchive, sameRootGivesTheSameBytes) {
    const Dictionary root{{u"b"_s, 1}, {u"a"_s, u"x"_s}};
    EXPECT_EQ(archivedData(root), archivedData(root));
}

TEST(KeyedArchive, picturesAndDeepNestingAreNotArchived) {
    EXPECT_EQ(archivedData(Image{}), std::nullopt);
    EXPECT_EQ(archivedData(Array{Image{}}), std::nullopt);
    Boxed deep = 1;
    for (int i = 0; i < kPropertyListDepth; ++i)
        deep = Array{deep};
    EXPECT_EQ(writtenAndRead(deep), deep);
    EXPECT_EQ(archivedData(Array{deep}), std::nullopt);
}

TEST(KeyedArchive, readsWhatOthersWrote) {
    const Dictionary expected{
        {u"appversion"_s, 10501}, {u"bigWin"_s, true}, {u"logContent"_s, u"\nNov 21} Gr\u00FC\u00DFe \U0001F600"_s}};
    EXPECT_EQ(rootOf(kArchive), Boxed(expected));
}

TEST(KeyedArchive, readsMutableClasses) {
    const Boxed mutableArray = Dictionary{{u"$classname"_s, u"NSMutableArray"_s},
                                          {u"$classes"_s, Array{u"NSMutableArray"_s, u"NSArray"_s, u"NSObject"_s}}};
    EXPECT_EQ(rootOf(archiveOf({arrayObject({uniqueIdentifier(3), uniqueIdentifier(0)}), mutableArray, u"x"_s})),
              Boxed(Array{u"x"_s, nullptr}));
}

TEST(KeyedArchive, whatCannotBeReadIsNothing) {
    EXPECT_EQ(rootOf(QByteArray()), std::nullopt);
    EXPECT_EQ(rootOf(QByteArray("bplist00")), std::nullopt);
    EXPECT_EQ(rootOf(listOf(BinaryListWriter::ascii("text"))), std::nullopt);
    EXPECT_EQ(rootOf(Dictionary{{u"$archiver"_s, u"other"_s}}), std::nullopt);
    const Boxed list = classOf(u"NSArray"_s);
    const Boxed dictionary = classOf(u"NSDictionary"_s);
    const Boxed one = uniqueIdentifier(3);
    // An unknown class, or no class.
    EXPECT_EQ(rootOf(archiveOf({arrayObject({}), classOf(u"NSOther"_s)})), std::nullopt);
    EXPECT_EQ(rootOf(archiveOf({Dictionary{{u"NS.objects"_s, Array{}}}})), std::nullopt);
    EXPECT_EQ(rootOf(archiveOf(Array(1, Array{u"x"_s}))), std::nullopt);
    // Fields of a wrong type, or missing fields.
    EXPECT_EQ(rootOf(archiveOf({dictionaryObject(Array{one}, 7), dictionary, u"key"_s})), std::nullopt);
    EXPECT_EQ(rootOf(archiveOf({dictionaryObject(u"key"_s, Array{one}), dictionary, u"key"_s})), std::nullopt);
    EXPECT_EQ(rootOf(archiveOf({Dictionary{{u"$class"_s, uniqueIdentifier(2)}}, list})), std::nullopt);
    EXPECT_EQ(rootOf(archiveOf({Dictionary{{u"$class"_s, uniqueIdentifier(2)}}, classOf(u"NSData"_s)})), std::nullopt);
    // More keys than values, and keys that are not strings.
    EXPECT_EQ(rootOf(archiveOf({dictionaryObject(Array{one, one}, Array{one}), dictionary, u"key"_s})), std::nullopt);
    EXPECT_EQ(rootOf(archiveOf({dictionaryObject(Array{one}, Array{one}), dictionary, 7})), std::nullopt);
    EXPECT_EQ(rootOf(archiveOf({dictionaryObject(Array{uniqueIdentifier(0)}, Array{one}), dictionary, 7})),
              std::nullopt);
    // The same archive without errors is read.
    EXPECT_EQ(rootOf(archiveOf({dictionaryObject(Array{one}, Array{one}), dictionary, u"key"_s})),
              Boxed(Dictionary{{u"key"_s, u"key"_s}}));
}

TEST(KeyedArchive, identifiersThatNameNothingAreNil) {
    for (const std::int64_t number : {std::int64_t{0}, std::int64_t{9}, std::int64_t{65535}})
        EXPECT_EQ(rootOf(archiveOf({arrayObject({uniqueIdentifier(number)}), classOf(u"NSArray"_s)})),
                  Boxed(Array{nullptr}));
}

TEST(KeyedArchive, referencesInACircleAreNothing) {
    EXPECT_EQ(rootOf(archiveOf({arrayObject({uniqueIdentifier(1)}), classOf(u"NSArray"_s)})), std::nullopt);
    EXPECT_EQ(rootOf(archiveOf({dictionaryObject(Array{uniqueIdentifier(1)}, Array{uniqueIdentifier(1)}),
                                classOf(u"NSDictionary"_s)})),
              std::nullopt);
}

TEST(KeyedArchive, objectsThatDoubleAtEachStepAreNothing) {
    // Thirty arrays, where each refers to the next one twice.
    Array objects{arrayObject({uniqueIdentifier(3), uniqueIdentifier(3)}), classOf(u"NSArray"_s)};
    for (int i = 3; i < 32; ++i)
        objects.append(arrayObject({uniqueIdentifier(i + 1), uniqueIdentifier(i + 1)}));
    objects.append(u"end"_s);
    EXPECT_EQ(rootOf(archiveOf(objects)), std::nullopt);
}

TEST(KeyedArchive, anArchiveCutOffAnywhereIsNothing) {
    for (qsizetype length = 0; length < kArchive.size(); ++length)
        EXPECT_EQ(rootOf(kArchive.left(length)), std::nullopt) << length;
    const QByteArray own = archivedData(Dictionary{{u"appversion"_s, 10501}, {u"logContent"_s, u"\u00E9"_s}}).value();
    for (qsizetype length = 0; length < own.size(); ++length)
        EXPECT_EQ(rootOf(own.left(length)), std::nullopt) << length;
}

/// If damaged bytes give a root, it is valid: it can be archived and read again.
void expectHarmless(const QByteArray& bytes) {
    const auto root = rootOf(bytes);
    if (!root) return;
    const auto again = archivedData(*root);
    ASSERT_TRUE(again) << bytes.toHex().toStdString();
    EXPECT_EQ(archivedData(rootOf(*again).value()), again) << bytes.toHex().toStdString();
}

TEST(KeyedArchive, everyFlippedBitIsHarmless) {
    for (qsizetype place = 0; place < kArchive.size(); ++place) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray bytes = kArchive;
            bytes[place] = static_cast<char>(bytes[place] ^ (1 << bit));
            expectHarmless(bytes);
        }
    }
}

TEST(KeyedArchive, thousandsOfMutantsAreHarmless) {
    std::minstd_rand random(1); // the same mutants in every run
    const auto below = [&random](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<unsigned>(limit));
    };
    // Bytes with a meaning in the format: markers, counts, limits of numbers.
    const QByteArray telling = QByteArray::fromHex("000108090f10111213223350515f606f80818fa0a1afd0d1df7fff");
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes = kArchive;
        for (qsizetype changes = 1 + below(4); changes > 0; --changes) {
            const qsizetype place = below(bytes.size());
            const qsizetype length = 1 + below(bytes.size() - place < 8 ? bytes.size() - place : 8);
            switch (below(4)) {
            case 0: bytes[place] = telling[below(telling.size())]; break;
            case 1: bytes.remove(place, length); break;
            case 2: bytes.insert(place, bytes.mid(below(bytes.size()), length)); break;
            default: bytes.replace(place, length, bytes.mid(below(bytes.size()), length)); break;
            }
            if (bytes.isEmpty()) bytes = kArchive;
        }
        expectHarmless(bytes);
    }
}

} // namespace
} // namespace quillow
