// Builds the text of an export file from records. It depends on its arguments only and has no side effects.
#pragma once

#include "base/Boxed.h"
#include "util/exporter/ExportLayout.h"

#include <QByteArray>

namespace quillow {

/// The entries in the description of a field: the name that the user sees and the header row shows, and the key
/// path of the field's value in a record.
inline constexpr char16_t kPublicKey[] = u"publicKey";
inline constexpr char16_t kInnerKey[] = u"innerKey";

enum class HeaderRow { no, yes };

/// The file in UTF-8, without byte-order mark; lone surrogates become U+FFFD. Values missing from a record, and
/// entries missing from a field's description, are empty text. Header names are not cleaned. Time and memory grow
/// linearly with the file.
[[nodiscard]] QByteArray exportText(const Boxed::Array& records, const Boxed::Array& fields, const ExportLayout& layout,
                                    HeaderRow headerRow); // selector: none

} // namespace quillow
