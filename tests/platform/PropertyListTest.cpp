// Property lists in both forms: every type, and hostile lists from the network.
#include "platform/qt/plist/PropertyList.h"

#include "tests/platform/BinaryListWriter.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace quillow {
namespace {

using Writer = BinaryListWriter;

/// The two forms of one list, written by an independent writer (Python's plistlib).
const QByteArray kSampleBinary = QByteArray::fromHex(
    "62706c6973743030dc0102030405060708090a0b0c0d0e0f101415161718191a1b5344505553474655534c5241536172"
    "72536269675164546461746154646174655166536e6567517251746f101800680074007400700073003a002f002f0065"
    "00780061006d0070006c0065002e006f00720067002f007000e4006700655f101768747470733a2f2f6578616d706c65"
    "2e6f72672f676574112906a311121310015161a01400000000000000008000000000000005d04200ff3341c858cf5c00"
    "00000813ffffffffffffffff23400400000000000009082125292d3135373c414347494b7e989b9fa1a3a4b5b6b9c2c3"
    "ccd50000000000000101000000000000001c000000000000000000000000000000d6");
const QByteArray kSampleXml = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//EXAMPLE//DTD PLIST 1.0//EN" "http://example.org/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>DPU</key>
	<string>https://example.org/päge</string>
	<key>GFU</key>
	<string>https://example.org/get</string>
	<key>LRA</key>
	<integer>10502</integer>
	<key>arr</key>
	<array>
		<integer>1</integer>
		<string>a</string>
		<array/>
	</array>
	<key>big</key>
	<integer>9223372036854775813</integer>
	<key>d</key>
	<dict/>
	<key>data</key>
	<data>
	AP8=
	</data>
	<key>date</key>
	<date>2026-11-21T09:41:12Z</date>
	<key>f</key>
	<false/>
	<key>neg</key>
	<integer>-1</integer>
	<key>r</key>
	<real>2.5</real>
	<key>t</key>
	<true/>
</dict>
</plist>
)";

Boxed sampleValue() {
    return Boxed::Dictionary{
        {QStringLiteral("LRA"), 10502},
        {QStringLiteral("GFU"), QStringLiteral("https://example.org/get")},
        {QStringLiteral("DPU"), QStringLiteral("https://example.org/p\u00E4ge")},
        {QStringLiteral("neg"), -1},
        {QStringLiteral("big"), std::int64_t{-9223372036854775803}},
        {QStringLiteral("r"), 2.5},
        {QStringLiteral("t"), true},
        {QStringLiteral("f"), false},
        {QStringLiteral("date"), QDateTime(QDate(2026, 11, 21), QTime(9, 41, 12), QTimeZone::utc())},
        {QStringLiteral("data"), QByteArray("\0\xFF", 2)},
        {QStringLiteral("arr"), Boxed::Array{1, QStringLiteral("a"), Boxed::Array{}}},
        {QStringLiteral("d"), Boxed::Dictionary{}}};
}

QByteArray xml(const QByteArray& body) {
    return "<plist version=\"1.0\">" + body + "</plist>";
}

/// Nested arrays around a string.
QByteArray nestedXml(int levels) {
    return xml(QByteArray("<array>").repeated(levels) + "<string>x</string>" + QByteArray("</array>").repeated(levels));
}
QByteArray nestedBinary(int levels) {
    Writer writer;
    for (int level = 0; level < levels; ++level)
        writer.add(writer.array({static_cast<std::uint64_t>(level) + 1}));
    writer.add(Writer::ascii("x"));
    return writer.list();
}

TEST(PropertyList, readsEveryTypeInBothForms) {
    EXPECT_EQ(propertyListFromData(kSampleXml), std::optional(sampleValue()));
    EXPECT_EQ(propertyListFromData(kSampleBinary), std::optional(sampleValue()));
}

TEST(PropertyList, readsTheFormsOfXmlScalars) {
    const struct {
        QByteArray body;
        Boxed value;
    } rows[] = {
        {"<integer>-9223372036854775808</integer>", std::int64_t{-9223372036854775807} - 1},
        {"<integer>18446744073709551615</integer>", -1},
        {"<integer> 0x1F\n</integer>", 31},
        {"<real>-1e3</real>", -1000.0},
        {"<string></string>", QString(QLatin1String(""))},
        {"<string/>", QString(QLatin1String(""))},
        {"<string>a&lt;b&amp;&#x1F600;<![CDATA[<c>]]></string>", QStringLiteral("a<b&\U0001F600<c>")},
        {"<data></data>", QByteArray("")},
        {"<data>\n\tAP8=\n</data>", QByteArray("\0\xFF", 2)},
        {"<data>\r\n\tAA\n\tEC Aw==</data>", QByteArray("\0\1\2\3", 4)},
        {"<!-- before --><true/><!-- after -->", true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(propertyListFromData(xml(row.body)), std::optional(row.value)) << row.body.toStdString();
}

TEST(PropertyList, readsTheFormsOfBinaryScalars) {
    const struct {
        const char* hex;
        Boxed value;
    } rows[] = {
        {"10ff", 255},
        {"11ffff", 65535},
        {"12ffffffff", std::int64_t{4294967295}},
        {"13ffffffffffffffff", -1},
        {"1400000000000000008000000000000001", std::int64_t{-9223372036854775807}},
        {"223fc00000", 1.5F},
        {"233ff8000000000000", 1.5},
        {"8101ff", Boxed::Dictionary{{QStringLiteral("CF$UID"), 511}}},
        {"5f100241e4", QStringLiteral("A\u00E4")},
        {"62d83dde00", QStringLiteral("\U0001F600")},
        {"40", QByteArray("")},
        {"08", false},
        {"09", true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(propertyListFromData(listOf(QByteArray::fromHex(row.hex))), std::optional(row.value)) << row.hex;
}

TEST(PropertyList, refusesWhatIsNoListOfTheForm) {
    for (const char* text : {"",
                             "no list",
                             "<html><body>Not found</body></html>",
                             "<plist/>",
                             "<plist></plist>",
                             "<plist><unknown/></plist>",
                             "<plist><integer>12x</integer></plist>",
                             "<plist><integer/></plist>",
                             "<plist><real>one</real></plist>",
                             "<plist><date>yesterday</date></plist>",
                             "<plist><date>9999-12-31T00:00:00Z</date></plist>", // as in the binary form
                             "<plist><data>*</data></plist>",
                             "<plist><data>AP8</data></plist>", // cut off
                             "<plist><data>AP9=</data></plist>",
                             "<plist><dict><string>no key</string></dict></plist>",
                             "<plist><dict><key>k</key></dict></plist>",
                             "<plist><dict><key>k<b/></key><true/></dict></plist>",
                             "<plist><string>a<b/></string></plist>",
                             "<plist><true/><true/></plist>",
                             "<plist><array><true></array></plist>",
                             "<plist><true/>",
                             "<plist><string>&unknown;</string></plist>",
                             "{ LRA = 10502; }",
                             "bplist00",
                             "bplist15"})
        EXPECT_EQ(propertyListFromData(text), std::nullopt) << text;
}

TEST(PropertyList, refusesWrongBinaryObjects) {
    for (const char* hex : {"00",
                            "0f",
                            "15" /* 32 bytes */,
                            "1fff",
                            "20aa",
                            "243ff8000000000000",
                            "337ff8000000000000" /* not a number */,
                            "337ff0000000000000" /* infinite */,
                            "3a",
                            "4f",
                            "4fff",
                            "4f14",
                            "5f13ffffffffffffffff",
                            "6f137fffffffffffffff",
                            "af13ffffffffffffffff",
                            "df137fffffffffffffff",
                            "8f",
                            "70",
                            "90",
                            "b0",
                            "c0",
                            "e0",
                            "f0",
                            "a1ffff",
                            "d1ffffffff",
                            "af12ffffffff"})
        EXPECT_EQ(propertyListFromData(listOf(QByteArray::fromHex(hex))), std::nullopt) << hex;
}

TEST(PropertyList, aKeyThatIsNoStringIsRefused) {
    Writer writer;
    writer.add(QByteArray::fromHex("d100010002"));
    writer.add(QByteArray::fromHex("1001"));
    writer.add(Writer::ascii("value"));
    EXPECT_EQ(propertyListFromData(writer.list()), std::nullopt);
}

TEST(PropertyList, readsListsWithEverySizeOfOffsetsAndReferences) {
    const Boxed value = Boxed::Dictionary{{QStringLiteral("k"), Boxed::Array{1, QStringLiteral("two")}}};
    for (int offsetSize = 1; offsetSize <= 8; ++offsetSize) {
        for (int referenceSize = 1; referenceSize <= 8; ++referenceSize) {
            Writer writer;
            writer.offsetSize = offsetSize;
            writer.referenceSize = referenceSize;
            writer.addValue(value);
            EXPECT_EQ(propertyListFromData(writer.list()), std::optional(value));
        }
    }
    for (const int size : {0, 9, 255}) {
        Writer writer;
        writer.addValue(value);
        writer.offsetSize = size;
        EXPECT_EQ(propertyListFromData(writer.list()), std::nullopt);
    }
}

TEST(PropertyList, takesNestingUpToItsLimitOnly) {
    for (const auto& nested : {&nestedXml, &nestedBinary}) {
        EXPECT_NE(propertyListFromData(nested(kPropertyListDepth)), std::nullopt);
        EXPECT_EQ(propertyListFromData(nested(kPropertyListDepth + 1)), std::nullopt);
        EXPECT_EQ(propertyListFromData(nested(20000)), std::nullopt);
    }
    EXPECT_EQ(propertyListFromData(QByteArray("<plist><dict><key>k</key>").repeated(20000)), std::nullopt);
}

TEST(PropertyList, takesObjectsUpToItsLimitOnly) {
    for (const int count : {kPropertyListObjects - 2, kPropertyListObjects}) {
        const bool isWithin = count < kPropertyListObjects;
        const QByteArray list = xml("<array>" + QByteArray("<true/>").repeated(count) + "</array>");
        EXPECT_EQ(propertyListFromData(list).has_value(), isWithin);

        Writer writer;
        writer.add(writer.array(QList<std::uint64_t>(count, 1)));
        writer.add("\x09");
        EXPECT_EQ(propertyListFromData(writer.list()).has_value(), isWithin);
    }
}

TEST(PropertyList, referencesInACircleEnd) {
    Writer toItself;
    toItself.add(toItself.array({0}));
    EXPECT_EQ(propertyListFromData(toItself.list()), std::nullopt);

    Writer manyTimes;
    manyTimes.add(manyTimes.array(QList<std::uint64_t>(1000, 0)));
    EXPECT_EQ(propertyListFromData(manyTimes.list()), std::nullopt);

    Writer ofThree;
    ofThree.add(ofThree.array({1}));
    ofThree.add(ofThree.array({2}));
    ofThree.add(ofThree.array({0, 1, 2}));
    EXPECT_EQ(propertyListFromData(ofThree.list()), std::nullopt);

    Writer keyAndValue;
    keyAndValue.add(QByteArray::fromHex("d100000000"));
    EXPECT_EQ(propertyListFromData(keyAndValue.list()), std::nullopt);
}

TEST(PropertyList, oneObjectNamedManyTimesStaysWithinTheBounds) {
    // Thirty levels that each refer to the next one twice: a thousand million objects in half a kilobyte.
    Writer doubling;
    for (std::uint64_t level = 1; level <= 30; ++level)
        doubling.add(doubling.array({level, level}));
    doubling.add("\x09");
    EXPECT_EQ(propertyListFromData(doubling.list()), std::nullopt);

    // A thousand references to a long text.
    Writer texts;
    texts.add(texts.array(QList<std::uint64_t>(1000, 1)));
    texts.add(Writer::ascii(QByteArray(60000, 'x')));
    EXPECT_EQ(propertyListFromData(texts.list()), std::nullopt);
    // Three references are plausible in a real list.
    texts.objects[0] = texts.array({1, 1, 1});
    EXPECT_NE(propertyListFromData(texts.list()), std::nullopt);
}

TEST(PropertyList, aListCutOffAnywhereIsNone) {
    const qsizetype wholeXml = kSampleXml.indexOf("</plist>") + 8;
    for (qsizetype length = 0; length < wholeXml; ++length)
        EXPECT_EQ(propertyListFromData(kSampleXml.left(length)), std::nullopt) << length;
    for (qsizetype length = 0; length < kSampleBinary.size(); ++length)
        EXPECT_EQ(propertyListFromData(kSampleBinary.left(length)), std::nullopt) << length;
    for (qsizetype start = 9; start < kSampleBinary.size(); ++start)
        EXPECT_EQ(propertyListFromData("bplist00" + kSampleBinary.mid(start)), std::nullopt) << start;
}

TEST(PropertyList, wrongOffsetsAndCountsAreRefused) {
    const QByteArray body = QByteArray("bplist00") + "\x09";
    const std::uint64_t huge = ~std::uint64_t{0};
    const struct {
        std::uint64_t count;
        std::uint64_t root;
        std::uint64_t table;
        std::uint64_t offset;
        bool isRight;
    } rows[] = {{1, 0, 9, 8, true},
                {0, 0, 9, 8, false},
                {1, 1, 9, 8, false},
                {1, huge, 9, 8, false},
                {2, 0, 9, 8, false},
                {huge, 0, 9, 8, false},
                {huge / 4 + 2, 0, 9, 8, false},
                {1, 0, 0, 8, false},
                {1, 0, 7, 8, false},
                {1, 0, 10, 8, false},
                {1, 0, huge, 8, false},
                {1, 0, 9, 7, false},
                {1, 0, 9, 9, false},
                {1, 0, 9, 0, false},
                {1, 0, 9, 0xFFFFFFFF, false}};
    for (const auto& row : rows) {
        Writer writer;
        writer.root = row.root;
        const QByteArray list = body + bigEndian(row.offset, 4) + writer.trailer(row.count, row.table);
        EXPECT_EQ(propertyListFromData(list).has_value(), row.isRight)
            << row.count << ' ' << row.root << ' ' << row.table << ' ' << row.offset;
    }
}

TEST(PropertyList, declarationsOfEntitiesAreRefused) {
    const QByteArray list = "<plist><string>&a;</string></plist>";
    for (const char* type :
         {"<!DOCTYPE plist [<!ENTITY a \"x\">]>", "<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>",
          "<!DOCTYPE plist [<!ENTITY a \"&b;&b;\"><!ENTITY b \"&c;&c;\"><!ENTITY c \"grow\">]>",
          "<!DOCTYPE plist [<!ENTITY % p SYSTEM \"file:///etc/passwd\"> %p;]>",
          "<!DOCTYPE plist PUBLIC \"a\" \"http://127.0.0.1:9/x.dtd\">"})
        EXPECT_EQ(propertyListFromData(type + list), std::nullopt) << type;
    EXPECT_EQ(propertyListFromData("<!DOCTYPE plist [<!ENTITY a \"x\">]><plist><true/></plist>"), std::nullopt);
    EXPECT_EQ(propertyListFromData("<!DOCTYPE plist [<!ENTITY % p \"x\">]><plist><true/></plist>"), std::nullopt);
    EXPECT_NE(propertyListFromData("<!DOCTYPE plist SYSTEM \"http://127.0.0.1:9/x.dtd\"><plist><true/></plist>"),
              std::nullopt);
}

/// Changes, removes and repeats bytes, and inserts large numbers and bytes of `other`.
QByteArray mutated(QByteArray list, const QByteArray& other, std::mt19937& random) {
    const auto below = [&random](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<std::uint32_t>(std::max<qsizetype>(limit, 1)));
    };
    const qsizetype changes = 1 + below(4);
    for (qsizetype i = 0; i < changes && !list.isEmpty(); ++i) {
        const qsizetype at = below(list.size());
        switch (below(6)) {
        case 0: list[at] = static_cast<char>(below(256)); break;
        case 1: list[at] = static_cast<char>(list[at] ^ (1 << below(8))); break;
        case 2: list.remove(at, 1 + below(8)); break;
        case 3: list.insert(at, list.mid(below(list.size()), 1 + below(40))); break;
        case 4: list.replace(at, 8, bigEndian(~std::uint64_t{0} >> below(64), 8)); break;
        default: list.insert(at, other.mid(below(other.size()), 1 + below(40))); break;
        }
    }
    return list;
}

TEST(PropertyList, mutatedListsAreReadOrRefused) {
    std::mt19937 random(20261121);
    int read = 0;
    constexpr int kRounds = 40000;
    for (int round = 0; round < kRounds; ++round) {
        const bool isXml = round % 2 == 0;
        const QByteArray& list = isXml ? kSampleXml : kSampleBinary;
        if (propertyListFromData(mutated(list, isXml ? kSampleBinary : kSampleXml, random))) ++read;
    }
    // Some mutated lists are still valid.
    EXPECT_GT(read, kRounds / 100);
    EXPECT_LT(read, kRounds * 9 / 10);
}

} // namespace
} // namespace quillow
