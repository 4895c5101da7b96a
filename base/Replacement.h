// Replacing one text by another, unit by unit.
#pragma once

#include <QString>
#include <QStringView>

namespace quillow {

/// Replaces every occurrence in one literal, case-sensitive pass from left to right; what was put in is not looked at again.
/// Takes time linear in the text, however many occurrences it holds. `target` is not empty.
[[nodiscard]] QString
stringByReplacingOccurrences(const QString& text, QStringView target,
                             QStringView replacement); // selector: stringByReplacingOccurrencesOfString:withString:

} // namespace quillow
