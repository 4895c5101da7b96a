// Texts with blanks to fill in.
#pragma once

#include <QString>

#include <initializer_list>
#include <optional>

namespace quillow {

/// Replaces each "%@" of the format by the next argument, all in one step: an argument may itself hold "%@" or "%1". A nil
/// argument reads "(null)". There are as many arguments as blanks.
[[nodiscard]] QString
stringWithFormat(const QString& format,
                 std::initializer_list<std::optional<QString>> arguments); // selector: stringWithFormat:

} // namespace quillow
