// Reads property lists, XML and binary, that nobody vouches for.
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

#include <optional>

namespace quillow {

/// The most levels of arrays and dictionaries inside one another.
inline constexpr int kPropertyListDepth = 32;
/// The most objects in one list, each reference counted: a binary list can name one object many times.
inline constexpr int kPropertyListObjects = 65536;

/// The root object of the list, or nothing when the bytes are no whole property list within the bounds. Integers become 64-bit
/// integers, reals doubles, dates UTC instants; a unique identifier (which only archives hold) becomes a dictionary with the
/// one key "CF$UID", as it is written in XML.
[[nodiscard]] std::optional<Boxed> propertyListFromData(const QByteArray& bytes);

} // namespace quillow
