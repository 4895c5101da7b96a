// The layouts of exported records: the delimiters around the values, and how values are cleaned.
#pragma once

#include <QString>

namespace quillow {

/// The numbers are those of `fileFormatToSave`; any other number means a layout without delimiters.
enum class ExportFormat { custom = 0, tabSeparated = 1, commaSeparated = 2, htmlTable = 3, htmlPage = 4 };

/// What a single space replaces in values.
enum class ValueCleaning { none, tabsAndLineFeeds, lineFeeds };

struct ExportLayout {
    QString startOfFile;
    QString endOfFile;
    QString startOfRecord;
    QString endOfRecord;
    QString fieldOpen;
    QString fieldClose;
    QString fieldSeparator;
    bool endsLastRecord = false; ///< whether the last record gets the end-of-record text, too
    ValueCleaning cleaning = ValueCleaning::none;
};

/// The layout of a format. The layout of the custom format is the user's: here it has no delimiters, like that of
/// unknown formats.
[[nodiscard]] ExportLayout layoutOfFormat(int format); // selector: none

/// The extension of a format's files, without a dot.
[[nodiscard]] QString extensionOfFormat(int format); // selector: none

/// Converts delimiters that a user has typed: every backslash-n becomes a line feed, then every backslash-t a tab.
[[nodiscard]] ExportLayout unescapedLayout(const ExportLayout& typed); // selector: none

/// The reverse: delimiters as a user would type them.
[[nodiscard]] ExportLayout escapedLayout(const ExportLayout& layout); // selector: none

/// The value in a form that fits the layout's cells. Cleaning twice gives the same result.
[[nodiscard]] QString cleanedValue(const QString& value, ValueCleaning cleaning); // selector: none

} // namespace quillow
