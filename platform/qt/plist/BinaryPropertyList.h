// The binary form of property lists: objects, a table of their offsets, and a trailer of 32 bytes with the offset of
// the table.
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

#include <optional>

namespace quillow {

[[nodiscard]] std::optional<Boxed> readBinaryPropertyList(const QByteArray& bytes);

} // namespace quillow
