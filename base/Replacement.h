// Replacing one text by another, unit by unit.
#pragma once

#include <QString>
#include <QStringView>

namespace quillow {

/// Replaces every occurrence in one literal, case-sensitive pass from left to right. Replacements are not searched
/// again. Time is linear in the size of the text, for any number of occurrences. `target` must not be empty.
[[nodiscard]] QString
stringByReplacingOccurrences(const QString& text, QStringView target,
                             QStringView replacement); // selector: stringByReplacingOccurrencesOfString:withString:

} // namespace quillow
