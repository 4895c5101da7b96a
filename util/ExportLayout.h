// The layouts in which records are exported: what stands between the values, and how values are made to fit.
#pragma once

#include <QString>

namespace quillow {

/// The numbers are those of `fileFormatToSave`; any other stands for a layout without delimiters.
enum class ExportFormat { custom = 0, tabSeparated = 1, commaSeparated = 2, htmlTable = 3, htmlPage = 4 };

/// What is replaced in values by a single space.
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

/// The layout of a format. That of the custom one is the user's: here it is without delimiters, as that of unknown formats is.
[[nodiscard]] ExportLayout layoutOfFormat(int format); // selector: none

/// The extension of a format's files, without a dot.
[[nodiscard]] QString extensionOfFormat(int format); // selector: none

/// The delimiters with every backslash-n made a line feed and then every backslash-t a tab, as a user types them.
[[nodiscard]] ExportLayout unescapedLayout(const ExportLayout& typed); // selector: none

/// The same the other way: as the user would type them.
[[nodiscard]] ExportLayout escapedLayout(const ExportLayout& layout); // selector: none

/// The value as the layout's cells can hold it. Done again, it changes nothing more.
[[nodiscard]] QString cleanedValue(const QString& value, ValueCleaning cleaning); // selector: none

} // namespace quillow
