// Reads property lists, XML and binary, that nobody vouches for.
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace quillow {

/// The most levels of arrays and dictionaries inside one another.
inline constexpr int kPropertyListDepth = 32;
/// The most objects in one list, each reference counted: a binary list can name one object many times.
inline constexpr int kPropertyListObjects = 65536;

/// A unique identifier, which only archives hold, as a value: a dictionary with the one key "CF$UID", as it is written in XML.
[[nodiscard]] Boxed uniqueIdentifier(std::int64_t number);
/// Its number; nothing when the value is none.
[[nodiscard]] std::optional<std::int64_t> numberOfUniqueIdentifier(const Boxed& value);

/// Dates are counted in seconds from 2001-01-01 00:00 UTC.
[[nodiscard]] double secondsFromReferenceDate(const QDateTime& date);
/// The instant, in UTC; nothing for what is no date of a document, thousands of years away.
[[nodiscard]] std::optional<QDateTime> dateFromReferenceDate(double seconds);

/// The root object of the list, or nothing when the bytes are no whole property list within the bounds. Integers become 64-bit
/// integers, reals doubles, dates UTC instants.
[[nodiscard]] std::optional<Boxed> propertyListFromData(const QByteArray& bytes);

} // namespace quillow
