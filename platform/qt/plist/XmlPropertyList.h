// The XML form of property lists.
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

#include <optional>

namespace quillow {

[[nodiscard]] std::optional<Boxed> readXmlPropertyList(const QByteArray& bytes);

} // namespace quillow
