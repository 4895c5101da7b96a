// A boxed value as one line of ASCII that keeps its type (the forms are listed in QtDefaults.h), and back.
#pragma once

#include "base/Boxed.h"

#include <QString>

namespace quillow {

/// Nil has no text: empty.
[[nodiscard]] QString textFromBoxed(const Boxed& value);
/// Nil for a text of no known form.
[[nodiscard]] Boxed boxedFromText(const QString& text);

} // namespace quillow
