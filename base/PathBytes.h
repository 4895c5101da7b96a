// File names are bytes; paths in the program are QStrings. A name that is not UTF-8 keeps its bytes: each byte that is
// not part of valid UTF-8 becomes a lone low surrogate, U+DC80 to U+DCFF, and becomes that byte again. Every adapter
// that opens a path uses these functions.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace quillow {

[[nodiscard]] QByteArray pathToBytes(const QString& path);    // selector: none
[[nodiscard]] QString pathFromBytes(const QByteArray& bytes); // selector: none

/// The path of a local file URL, without trailing slashes; the root folder keeps its own.
[[nodiscard]] QString pathFromFileUrl(const QUrl& url); // selector: none
/// The URL of a path. It keeps every byte.
[[nodiscard]] QUrl fileUrlFromPath(const QString& path); // selector: none

} // namespace quillow
