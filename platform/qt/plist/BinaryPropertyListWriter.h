// Writes the binary form of property lists (BinaryPropertyList.h reads it).
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

namespace quillow {

/// Serialises the value: strings, 64-bit integers, reals, booleans, bytes, dates, arrays, dictionaries and unique
/// identifiers. The caller limits its depth and ensures that it contains neither nil nor a picture.
[[nodiscard]] QByteArray binaryPropertyList(const Boxed& value);

} // namespace quillow
