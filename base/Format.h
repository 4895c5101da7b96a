// Format strings with placeholders.
#pragma once

#include <QString>

#include <initializer_list>
#include <optional>

namespace quillow {

/// Replaces each "%@" of the format by the next argument in one pass, so an argument may itself contain "%@" or
/// "%1". A nil argument is written as "(null)". There must be as many arguments as placeholders.
[[nodiscard]] QString
stringWithFormat(const QString& format,
                 std::initializer_list<std::optional<QString>> arguments); // selector: stringWithFormat:

} // namespace quillow
