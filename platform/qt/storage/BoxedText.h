// A boxed value as one line of ASCII that keeps its type (the forms are listed in DefaultsFile.h), and back.
#pragma once

#include "base/Boxed.h"

#include <QString>

#include <optional>

namespace quillow {

/// Encodes a string in printable ASCII without blanks, quotes, brackets and the special characters of INI files.
/// "%XXXX" encodes one UTF-16 unit, so a lone surrogate survives.
[[nodiscard]] QString asciiFromString(const QString& string);
[[nodiscard]] std::optional<QString> stringFromAscii(QStringView text);

/// Empty for nil and for objects that are read by key.
[[nodiscard]] QString textFromBoxed(const Boxed& value);
/// Nil if the text has no known form.
[[nodiscard]] Boxed boxedFromText(const QString& text);

} // namespace quillow
