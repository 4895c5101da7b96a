// Writes the binary form of property lists (BinaryPropertyList.h reads it).
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

namespace quillow {

/// The value as a list: strings, 64-bit integers, reals, booleans, bytes, dates, arrays, dictionaries and unique identifiers. The
/// caller vouches for its depth, and for there being neither nil nor a picture in it.
[[nodiscard]] QByteArray binaryPropertyList(const Boxed& value);

} // namespace quillow
