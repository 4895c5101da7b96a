// A boxed value as one line of ASCII that keeps its type (the forms are listed in DefaultsFile.h), and back.
#pragma once

#include "base/Boxed.h"

#include <QString>

#include <optional>

namespace quillow {

/// Printing ASCII without blanks, quotes, brackets and signs of the INI form. By units, not by characters, so that a lone
/// surrogate survives: "%XXXX" is one UTF-16 unit.
[[nodiscard]] QString asciiFromString(const QString& string);
[[nodiscard]] std::optional<QString> stringFromAscii(QStringView text);

/// Empty for nil and for an object that is read by key.
[[nodiscard]] QString textFromBoxed(const Boxed& value);
/// Nil for a text of no known form.
[[nodiscard]] Boxed boxedFromText(const QString& text);

} // namespace quillow
