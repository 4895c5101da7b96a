// The parts of a path, taken from its text alone: nothing on disk is looked at. Slashes at the end never count.
#pragma once

#include <QString>
#include <QUrl>

namespace quillow {

/// What follows the last slash: "/tmp/a.txt" and "/tmp/a.txt/" give "a.txt"; "/" gives "/"; "" gives "".
[[nodiscard]] QString lastPathComponent(const QString& path); // selector: lastPathComponent

/// What follows the last dot of the last component, without the dot: "/tmp/a.b.html" gives "html". A name whose only dot is
/// its first character (".pdf") or its last ("a.") has none: "".
[[nodiscard]] QString pathExtension(const QString& path); // selector: pathExtension

/// The path without its extension and the dot before it: "/tmp/a.b.html" gives "/tmp/a.b", ".pdf" stays.
[[nodiscard]] QString stringByDeletingPathExtension(const QString& path); // selector: stringByDeletingPathExtension

/// The path of a file URL in the form of base/PathBytes.h, percent escapes undone, without a slash at its end; "" for any other.
[[nodiscard]] QString pathOfURL(const QUrl& url); // selector: path

/// Lower case by Unicode's rules, whatever the locale: "I" gives "i" in Turkish too.
[[nodiscard]] QString lowercaseString(const QString& text); // selector: lowercaseString

} // namespace quillow
