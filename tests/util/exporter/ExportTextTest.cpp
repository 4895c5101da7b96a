// The text of an export file: the layouts byte by byte, cleaning, missing values, and random records compared with
// a plain implementation of the rules.
#include "util/exporter/ExportText.h"

#include "util/exporter/ValueText.h"

#include <gtest/gtest.h>

#include <random>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

Boxed field(const QString& publicKey, const QString& innerKey) {
    return Boxed::Dictionary{{u"publicKey"_s, publicKey}, {u"innerKey"_s, innerKey}};
}

Boxed person(const QString& name, const QString& city) {
    return Boxed::Dictionary{{u"name"_s, name}, {u"city"_s, city}};
}

const Boxed::Array kFields{field(u"Name"_s, u"name"_s), field(u"City"_s, u"city"_s)};
const Boxed::Array kPeople{person(u"Ann"_s, u"Rome"_s), person(u"Bob"_s, u"Oslo"_s)};

QByteArray exported(int format, HeaderRow headerRow = HeaderRow::yes, const Boxed::Array& records = kPeople,
                    const Boxed::Array& fields = kFields) {
    return exportText(records, fields, layoutOfFormat(format), headerRow);
}

TEST(ExportText, theExampleByteForByte) {
    EXPECT_EQ(exported(1), QByteArray("Name\tCity\nAnn\tRome\nBob\tOslo"));
    EXPECT_EQ(exported(2), QByteArray("\"Name\",\"City\"\n\"Ann\",\"Rome\"\n\"Bob\",\"Oslo\""));
    const QByteArray rows = "<tr><td>Name</td><td>City</td></tr><tr><td>Ann</td><td>Rome</td></tr>"
                            "<tr><td>Bob</td><td>Oslo</td></tr>";
    EXPECT_EQ(exported(3), "<table>" + rows + "</table>");
    EXPECT_EQ(exported(4), "<!DOCTYPE html><html><body><table>" + rows + "</table></body></html>");
}

TEST(ExportText, unknownFormatsHaveNoDelimiters) {
    for (const int format : {5, 6, 1000, -1})
        EXPECT_EQ(exported(format), QByteArray("NameCityAnnRomeBobOslo")) << format;
}

TEST(ExportText, withoutHeaderTheRecordsStandAlone) {
    EXPECT_EQ(exported(1, HeaderRow::no), QByteArray("Ann\tRome\nBob\tOslo"));
    EXPECT_EQ(exported(2, HeaderRow::no), QByteArray("\"Ann\",\"Rome\"\n\"Bob\",\"Oslo\""));
}

TEST(ExportText, aHeaderWithoutRecordsIsEndedAsALastRecordIs) {
    EXPECT_EQ(exported(1, HeaderRow::yes, {}), QByteArray("Name\tCity"));
    EXPECT_EQ(exported(2, HeaderRow::yes, {}), QByteArray("\"Name\",\"City\""));
    EXPECT_EQ(exported(3, HeaderRow::yes, {}), QByteArray("<table><tr><td>Name</td><td>City</td></tr></table>"));
}

TEST(ExportText, nothingAtAllIsStartAndEndOfFile) {
    EXPECT_EQ(exported(1, HeaderRow::no, {}), QByteArray(""));
    EXPECT_EQ(exported(2, HeaderRow::no, {}), QByteArray(""));
    EXPECT_EQ(exported(3, HeaderRow::no, {}), QByteArray("<table></table>"));
    EXPECT_EQ(exported(4, HeaderRow::no, {}), QByteArray("<!DOCTYPE html><html><body><table></table></body></html>"));
}

TEST(ExportText, withoutFieldsRecordsAreTheirOwnDelimiters) {
    EXPECT_EQ(exported(1, HeaderRow::no, kPeople, {}), QByteArray("\n"));
    EXPECT_EQ(exported(1, HeaderRow::yes, kPeople, {}), QByteArray("\n\n"));
    EXPECT_EQ(exported(3, HeaderRow::yes, kPeople, {}), QByteArray("<table><tr></tr><tr></tr><tr></tr></table>"));
}

TEST(ExportText, tabsAndLineFeedsInTabSeparatedValuesBecomeSpaces) {
    const auto cleaned = [](const QString& value) {
        return QString::fromUtf8(exported(1, HeaderRow::no, {person(value, u"x"_s)}, {kFields[0]}));
    };
    EXPECT_EQ(cleaned(u"a \t b"_s), u"a  b"_s);
    EXPECT_EQ(cleaned(u"a\nb"_s), u"a b"_s);
    EXPECT_EQ(cleaned(u"a\tb"_s), u"a b"_s);
    EXPECT_EQ(cleaned(u"a\t\tb"_s), u"a  b"_s);
    EXPECT_EQ(cleaned(u"a \n\n b"_s), u"a  b"_s);
    EXPECT_EQ(cleaned(u"a \n \n b"_s), u"a   b"_s);
    EXPECT_EQ(cleaned(u"a\r\nb\rc"_s), u"a\r b\rc"_s);
    EXPECT_EQ(cleaned(u"a  \"b\"  "_s), u"a  \"b\"  "_s);
}

TEST(ExportText, lineFeedsInCommaSeparatedValuesBecomeSpacesAndNothingIsEscaped) {
    const auto cleaned = [](const QString& value) {
        return QString::fromUtf8(exported(2, HeaderRow::no, {person(value, u"x"_s)}, {kFields[0]}));
    };
    EXPECT_EQ(cleaned(u"say \"hi\", he said"_s), u"\"say \"hi\", he said\""_s);
    EXPECT_EQ(cleaned(u"a \n b"_s), u"\"a  b\""_s);
    EXPECT_EQ(cleaned(u"a\n\nb"_s), u"\"a  b\""_s);
    EXPECT_EQ(cleaned(u"a \t b\rc"_s), u"\"a \t b\rc\""_s);
}

TEST(ExportText, otherLayoutsWriteValuesAsTheyAre) {
    const QString value = u"<b>&\" \t \n \r"_s;
    EXPECT_EQ(exported(3, HeaderRow::no, {person(value, u""_s)}, {kFields[0]}),
              "<table><tr><td>" + value.toUtf8() + "</td></tr></table>");
    EXPECT_EQ(exported(0, HeaderRow::no, {person(value, u""_s)}, {kFields[0]}), value.toUtf8());
    EXPECT_EQ(exported(7, HeaderRow::no, {person(value, u""_s)}, {kFields[0]}), value.toUtf8());
}

TEST(ExportText, headerNamesAreNotCleaned) {
    const Boxed::Array fields{field(u"First\tname\n"_s, u"name"_s)};
    EXPECT_EQ(exported(1, HeaderRow::yes, {}, fields), QByteArray("First\tname\n"));
    EXPECT_EQ(exported(2, HeaderRow::yes, {}, fields), QByteArray("\"First\tname\n\""));
}

TEST(ExportText, absentThingsAreEmpty) {
    const Boxed::Array records{Boxed::Dictionary{{u"name"_s, u"Ann"_s}}, Boxed(), u"no record"_s};
    EXPECT_EQ(exported(2, HeaderRow::no, records), QByteArray("\"Ann\",\"\"\n\"\",\"\"\n\"\",\"\""));
    const Boxed::Array fields{Boxed::Dictionary{{u"innerKey"_s, u"name"_s}},
                              Boxed::Dictionary{{u"publicKey"_s, u"Nothing"_s}}, Boxed()};
    EXPECT_EQ(exported(1, HeaderRow::yes, {kPeople[0]}, fields), QByteArray("\tNothing\t\nAnn\t\t"));
}

TEST(ExportText, valuesAreFoundByKeyPath) {
    const Boxed::Dictionary address{{u"city"_s, Boxed::Dictionary{{u"name"_s, u"Rome"_s}}}};
    const Boxed::Array records{Boxed::Dictionary{{u"address"_s, address}, {u"age"_s, 42}}};
    EXPECT_EQ(exported(1, HeaderRow::no, records,
                       {field(u"City"_s, u"address.city.name"_s), field(u"Age"_s, u"age"_s),
                        field(u"None"_s, u"address.street"_s)}),
              QByteArray("Rome\t42\t"));
}

TEST(ExportText, theFileIsUtf8WithoutMark) {
    const Boxed::Array records{person(u"Zo\u00eb \U0001F600"_s, QString(QChar(0xD800)))};
    EXPECT_EQ(exported(1, HeaderRow::no, records), QByteArray("Zo\xC3\xAB \xF0\x9F\x98\x80\t\xEF\xBF\xBD"));
    // Two surrogate halves with nothing between them are one character.
    EXPECT_EQ(exported(5, HeaderRow::no, {person(QString(QChar(0xD83D)), QString(QChar(0xDE00)))}),
              QByteArray("\xF0\x9F\x98\x80"));
}

TEST(ExportLayout, extensions) {
    const std::pair<int, QString> expected[] = {{0, u"txt"_s},  {1, u"tsv"_s}, {2, u"csv"_s},    {3, u"txt"_s},
                                                {4, u"html"_s}, {5, u"txt"_s}, {1000, u"txt"_s}, {-1, u"txt"_s}};
    for (const auto& [format, extension] : expected)
        EXPECT_EQ(extensionOfFormat(format), extension) << format;
}

TEST(ExportLayout, typedDelimitersAreUnescapedInTwoPasses) {
    ExportLayout typed;
    typed.startOfFile = u"a\\nb\\tc\\n"_s;
    typed.endOfFile = u"\\\\n"_s; // the second backslash belongs to the n
    typed.fieldOpen = u"\\N\\r\\"_s;
    typed.fieldSeparator = u"n\\t\\\\t"_s;
    typed.endsLastRecord = true;
    const ExportLayout layout = unescapedLayout(typed);
    EXPECT_EQ(layout.startOfFile, u"a\nb\tc\n"_s);
    EXPECT_EQ(layout.endOfFile, u"\\\n"_s);
    EXPECT_EQ(layout.fieldOpen, u"\\N\\r\\"_s);
    EXPECT_EQ(layout.fieldSeparator, u"n\t\\\t"_s);
    EXPECT_TRUE(layout.endsLastRecord);
}

// Random records.

class RandomExport : public testing::Test {
protected:
    QString text(const QString& alphabet, std::uint32_t longest) {
        QString result;
        for (auto length = random_() % (longest + 1); length > 0; --length)
            result += alphabet[static_cast<qsizetype>(random_() % static_cast<std::uint32_t>(alphabet.size()))];
        return result;
    }
    Boxed value() {
        switch (random_() % 8) {
        case 0: return {};
        case 1: return static_cast<std::int32_t>(random_() % 1000) - 500;
        default: return text(u"ab \t\n\r\",<\u00e9\u20ac"_s + QChar(0xD83D) + QChar(0xDE00), 12);
        }
    }
    Boxed::Array someRecords(const Boxed::Array& fields) {
        Boxed::Array records;
        for (auto count = random_() % 6; count > 0; --count) {
            Boxed::Dictionary record;
            for (const Boxed& described : fields)
                record.insert(described.dictionary()->value(u"innerKey"_s).string().value(), value());
            records.append(record);
        }
        return records;
    }
    Boxed::Array someFields() {
        Boxed::Array fields;
        for (auto count = random_() % 5; count > 0; --count)
            fields.append(field(text(u"AB \t\n"_s, 5), u"key"_s + QString::number(count)));
        return fields;
    }

    std::mt19937 random_{11};
};

/// A plain implementation of the export rules, step by step.
QByteArray plainlyExported(const Boxed::Array& records, const Boxed::Array& fields, const ExportLayout& layout,
                           bool header, int format) {
    const auto entry = [](const Boxed& dictionary, const QString& key) {
        return dictionary.dictionary().value_or(Boxed::Dictionary()).value(key);
    };
    QString file = layout.startOfFile;
    if (header) {
        file += layout.startOfRecord;
        for (qsizetype k = 0; k < fields.size(); ++k) {
            file += layout.fieldOpen + textOfValue(entry(fields[k], u"publicKey"_s)) + layout.fieldClose;
            if (k != fields.size() - 1) file += layout.fieldSeparator;
        }
        if (!(!layout.endsLastRecord && records.isEmpty())) file += layout.endOfRecord;
    }
    for (qsizetype i = 0; i < records.size(); ++i) {
        file += layout.startOfRecord;
        for (qsizetype k = 0; k < fields.size(); ++k) {
            QString value = textOfValue(entry(records[i], entry(fields[k], u"innerKey"_s).string().value()));
            const QString space = u" "_s;
            if (format == 1) {
                value.replace(u" \t"_s, space).replace(u"\t "_s, space).replace(u"\t"_s, space);
                value.replace(u" \n"_s, space).replace(u"\n "_s, space);
                value.replace(u" \n"_s, space).replace(u"\n "_s, space).replace(u"\n"_s, space);
            }
            if (format == 2) value.replace(u" \n"_s, space).replace(u"\n "_s, space).replace(u"\n"_s, space);
            file += layout.fieldOpen + value + layout.fieldClose;
            if (k != fields.size() - 1) file += layout.fieldSeparator;
        }
        if (layout.endsLastRecord || i != records.size() - 1) file += layout.endOfRecord;
    }
    file += layout.endOfFile;
    // Qt would convert a lone surrogate to another character.
    QString valid;
    for (qsizetype i = 0; i < file.size(); ++i) {
        const bool isPair = file[i].isHighSurrogate() && i + 1 < file.size() && file[i + 1].isLowSurrogate();
        valid += file[i].isSurrogate() && !isPair ? QChar(0xFFFD) : file[i];
        if (isPair) valid += file[++i];
    }
    return valid.toUtf8();
}

TEST_F(RandomExport, comesOutAsTheRulesSay) {
    for (int i = 0; i < 4000; ++i) {
        const Boxed::Array fields = someFields();
        const Boxed::Array records = someRecords(fields);
        const int format = static_cast<int>(random_() % 6);
        ExportLayout layout = layoutOfFormat(format);
        if (format == 0) {
            layout = {text(u"s\n"_s, 2), text(u"e\t"_s, 2), text(u"[ "_s, 2), text(u"]\n"_s, 2),
                      text(u"("_s, 1),   text(u")"_s, 1),   text(u";,"_s, 2), random_() % 2 == 0};
        }
        const bool header = random_() % 2 == 0;
        ASSERT_EQ(exportText(records, fields, layout, header ? HeaderRow::yes : HeaderRow::no),
                  plainlyExported(records, fields, layout, header, format))
            << "case " << i << ", format " << format;
    }
}

TEST_F(RandomExport, tabSeparatedFilesHaveOneLineARecordAndOneCellAField) {
    for (int i = 0; i < 1000; ++i) {
        Boxed::Array fields = someFields();
        fields.append(field(u"Last"_s, u"last"_s));
        Boxed::Array records = someRecords(fields);
        records.append(Boxed::Dictionary());
        const QList<QByteArray> lines = exported(1, HeaderRow::no, records, fields).split('\n');
        ASSERT_EQ(lines.size(), records.size());
        for (const QByteArray& line : lines)
            ASSERT_EQ(line.split('\t').size(), fields.size());
    }
}

TEST_F(RandomExport, cleaningLeavesNothingToClean) {
    for (int i = 0; i < 2000; ++i) {
        const QString value = text(u"a \t\n\r"_s, 20);
        for (const auto cleaning : {ValueCleaning::none, ValueCleaning::tabsAndLineFeeds, ValueCleaning::lineFeeds}) {
            const QString cleaned = cleanedValue(value, cleaning);
            ASSERT_EQ(cleanedValue(cleaned, cleaning), cleaned);
            ASSERT_LE(cleaned.size(), value.size());
        }
        ASSERT_FALSE(cleanedValue(value, ValueCleaning::tabsAndLineFeeds).contains(u'\t'));
        ASSERT_FALSE(cleanedValue(value, ValueCleaning::tabsAndLineFeeds).contains(u'\n'));
        ASSERT_FALSE(cleanedValue(value, ValueCleaning::lineFeeds).contains(u'\n'));
        ASSERT_EQ(cleanedValue(value, ValueCleaning::none), value);
    }
}

TEST_F(RandomExport, escapingIsTakenBackByUnescaping) {
    for (int i = 0; i < 500; ++i) {
        ExportLayout layout;
        layout.endOfRecord = text(u"a\n\tbnt\""_s, 10);
        EXPECT_EQ(unescapedLayout(escapedLayout(layout)).endOfRecord, layout.endOfRecord);
    }
}

} // namespace
} // namespace quillow
