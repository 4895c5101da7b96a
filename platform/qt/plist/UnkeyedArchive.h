// The older, unkeyed form of an archive: one stream of typed values in the order in which they were written. This
// reader extracts only a text.
//
// A stream begins with its version, a signature that gives the byte order, and the writer's system version. Values
// follow in groups, each after a string with their types: "@" is an object, "+" is counted bytes. An integer is one
// byte, or a tag followed by two or four bytes. Type and class names are written once and later referenced by number;
// objects and classes likewise, in a separate numbering. An object is its class and base classes, then its groups,
// then an end tag.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillow {

/// The characters of the string or styled text at the root of an unkeyed archive; std::nullopt if the bytes are not
/// such an archive or its root is not a text. The attributes after a styled text's characters are ignored.
[[nodiscard]] std::optional<QString> stringOfUnkeyedArchive(const QByteArray& archive);

} // namespace quillow
