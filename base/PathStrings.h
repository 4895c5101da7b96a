// The parts of a path, derived from its text alone, without access to the file system. Trailing slashes are ignored.
#pragma once

#include <QString>
#include <QUrl>

namespace quillow {

/// The part after the last slash: "/tmp/a.txt" and "/tmp/a.txt/" give "a.txt"; "/" gives "/"; "" gives "".
[[nodiscard]] QString lastPathComponent(const QString& path); // selector: lastPathComponent

/// The part after the last dot of the last component: "/tmp/a.b.html" gives "html". A name whose only dot is its first
/// character (".pdf") or its last ("a.") has no extension: "".
[[nodiscard]] QString pathExtension(const QString& path); // selector: pathExtension

/// The path without its extension and the dot before it: "/tmp/a.b.html" gives "/tmp/a.b", ".pdf" stays.
[[nodiscard]] QString stringByDeletingPathExtension(const QString& path); // selector: stringByDeletingPathExtension

/// The path of a file URL in the form of base/PathBytes.h, with percent escapes decoded and without trailing slashes;
/// empty for any other URL.
[[nodiscard]] QString pathOfURL(const QUrl& url); // selector: path

/// Lower case by Unicode's rules, independent of the locale: "I" gives "i" in Turkish too.
[[nodiscard]] QString lowercaseString(const QString& text); // selector: lowercaseString

} // namespace quillow
