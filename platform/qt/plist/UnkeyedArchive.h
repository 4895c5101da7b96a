// The older, unkeyed form of an archive: one stream of typed values in the order in which they were written. Only a text is read
// from it.
//
// A stream begins with its version, a signature that tells the order of bytes, and the writer's system version. Values follow in
// groups, each behind a string that names their types: "@" is an object, "+" are counted bytes. An integer is one byte, or a tag
// with two or four bytes behind it. Type and class names are written once and then named by their number; so are objects and
// classes, in a row of their own. An object is its class, the class above that and so on, then its groups, then an end tag.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillow {

/// The characters of the string, or of the styled text, that is the root of an unkeyed archive; nothing when the bytes are no
/// such archive, or its root is no text. The attributes behind a styled text's characters are not looked at.
[[nodiscard]] std::optional<QString> stringOfUnkeyedArchive(const QByteArray& archive);

} // namespace quillow
