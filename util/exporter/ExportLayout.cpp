#include "util/exporter/ExportLayout.h"

#include "base/Replacement.h"

#include <QStringView>

#include <algorithm>
#include <span>

namespace quillow {
namespace {

constexpr QString ExportLayout::*kDelimiters[] = {
    &ExportLayout::startOfFile, &ExportLayout::endOfFile,  &ExportLayout::startOfRecord,  &ExportLayout::endOfRecord,
    &ExportLayout::fieldOpen,   &ExportLayout::fieldClose, &ExportLayout::fieldSeparator,
};

// The text that each pass replaces by a space, in the order of the passes.
constexpr QStringView kTabAndLineFeedPasses[] = {u" \t", u"\t ", u"\t", u" \n", u"\n ", u" \n", u"\n ", u"\n"};
constexpr QStringView kLineFeedPasses[] = {u" \n", u"\n ", u"\n"};

std::span<const QStringView> passesOf(ValueCleaning cleaning) {
    switch (cleaning) {
    case ValueCleaning::none: return {};
    case ValueCleaning::tabsAndLineFeeds: return kTabAndLineFeedPasses;
    case ValueCleaning::lineFeeds: return kLineFeedPasses;
    }
    return {};
}

ExportLayout separatedText(const QString& quote, const QString& separator, ValueCleaning cleaning) {
    ExportLayout layout;
    layout.endOfRecord = QStringLiteral("\n");
    layout.fieldOpen = quote;
    layout.fieldClose = quote;
    layout.fieldSeparator = separator;
    layout.cleaning = cleaning;
    return layout;
}

ExportLayout html(const QString& start, const QString& end) {
    return {start,
            end,
            QStringLiteral("<tr>"),
            QStringLiteral("</tr>"),
            QStringLiteral("<td>"),
            QStringLiteral("</td>"),
            QString(),
            true,
            ValueCleaning::none};
}

} // namespace

ExportLayout layoutOfFormat(int format) {
    switch (static_cast<ExportFormat>(format)) {
    case ExportFormat::tabSeparated:
        return separatedText(QString(), QStringLiteral("\t"), ValueCleaning::tabsAndLineFeeds);
    case ExportFormat::commaSeparated:
        // deliberate: quotes inside a value are neither doubled nor escaped, and carriage returns stay.
        return separatedText(QStringLiteral("\""), QStringLiteral(","), ValueCleaning::lineFeeds);
    case ExportFormat::htmlTable: return html(QStringLiteral("<table>"), QStringLiteral("</table>"));
    case ExportFormat::htmlPage:
        return html(QStringLiteral("<!DOCTYPE html><html><body><table>"), QStringLiteral("</table></body></html>"));
    case ExportFormat::custom: break;
    }
    return {};
}

QString extensionOfFormat(int format) {
    switch (static_cast<ExportFormat>(format)) {
    case ExportFormat::tabSeparated: return QStringLiteral("tsv");
    case ExportFormat::commaSeparated: return QStringLiteral("csv");
    case ExportFormat::htmlPage: return QStringLiteral("html");
    // deliberate: a table alone is not an HTML file.
    case ExportFormat::htmlTable:
    case ExportFormat::custom: break;
    }
    return QStringLiteral("txt");
}

ExportLayout unescapedLayout(const ExportLayout& typed) {
    ExportLayout layout = typed;
    for (const auto delimiter : kDelimiters) {
        const QString withLineFeeds = stringByReplacingOccurrences(layout.*delimiter, u"\\n", u"\n");
        layout.*delimiter = stringByReplacingOccurrences(withLineFeeds, u"\\t", u"\t");
    }
    return layout;
}

ExportLayout escapedLayout(const ExportLayout& layout) {
    ExportLayout typed = layout;
    for (const auto delimiter : kDelimiters) {
        const QString withoutLineFeeds = stringByReplacingOccurrences(typed.*delimiter, u"\n", u"\\n");
        typed.*delimiter = stringByReplacingOccurrences(withoutLineFeeds, u"\t", u"\\t");
    }
    return typed;
}

QString cleanedValue(const QString& value, ValueCleaning cleaning) {
    // Every pass removes a tab or a line feed, so a value without them needs no pass.
    if (std::none_of(value.begin(), value.end(), [](QChar unit) { return unit == u'\t' || unit == u'\n'; }))
        return value;
    QString cleaned = value;
    for (const QStringView replaced : passesOf(cleaning))
        cleaned = stringByReplacingOccurrences(cleaned, replaced, u" ");
    return cleaned;
}

} // namespace quillow
