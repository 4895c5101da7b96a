// The text of an export file, made from records. Nothing but values goes in and bytes come out.
#pragma once

#include "base/Boxed.h"
#include "util/ExportLayout.h"

#include <QByteArray>

namespace quillow {

/// The entries of a field's description: the name shown to the user and written in the header row, and the key path that leads to
/// the field's value in a record.
inline constexpr char16_t kPublicKey[] = u"publicKey";
inline constexpr char16_t kInnerKey[] = u"innerKey";

enum class HeaderRow { no, yes };

/// The file in UTF-8, without byte-order mark; lone surrogates become U+FFFD. A value that a record does not have is empty text, and
/// so is everything that a field's description lacks. Header names are not cleaned. Time and memory grow with the file.
[[nodiscard]] QByteArray exportText(const Boxed::Array& records, const Boxed::Array& fields, const ExportLayout& layout,
                                    HeaderRow headerRow); // selector: none

} // namespace quillow
