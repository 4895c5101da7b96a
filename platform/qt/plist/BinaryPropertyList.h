// The binary form of property lists: objects, a table of their offsets, a trailer of 32 bytes that says where the table is.
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

#include <optional>

namespace quillow {

[[nodiscard]] std::optional<Boxed> readBinaryPropertyList(const QByteArray& bytes);

} // namespace quillow
