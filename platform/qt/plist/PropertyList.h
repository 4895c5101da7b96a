// Reads untrusted property lists, XML and binary.
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace quillow {

/// The maximum nesting depth of arrays and dictionaries.
inline constexpr int kPropertyListDepth = 32;
/// The maximum number of objects in one list. Each reference counts: a binary list can refer to one object many
/// times.
inline constexpr int kPropertyListObjects = 65536;

/// A unique identifier as a value: a dictionary with the single key "CF$UID", as in the XML form. Only archives
/// contain them.
[[nodiscard]] Boxed uniqueIdentifier(std::int64_t number);
/// The number of a unique identifier; std::nullopt if the value is not one.
[[nodiscard]] std::optional<std::int64_t> numberOfUniqueIdentifier(const Boxed& value);

/// The seconds since 2001-01-01 00:00 UTC, the unit of dates in lists.
[[nodiscard]] double secondsFromReferenceDate(const QDateTime& date);
/// The instant, in UTC; std::nullopt for NaN and for dates thousands of years away.
[[nodiscard]] std::optional<QDateTime> dateFromReferenceDate(double seconds);

/// The root object of the list, or std::nullopt if the bytes are not a complete property list within the limits.
/// Integers become 64-bit integers, reals doubles, dates UTC instants.
[[nodiscard]] std::optional<Boxed> propertyListFromData(const QByteArray& bytes);

} // namespace quillow
