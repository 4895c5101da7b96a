// File names are bytes, paths in the program are QStrings. Names that are not UTF-8 survive the way there and back: each stray
// byte becomes a lone low surrogate U+DC80..U+DCFF and returns as that byte. Every adapter that opens a path goes through here.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace quillow {

[[nodiscard]] QByteArray pathToBytes(const QString& path);    // selector: none
[[nodiscard]] QString pathFromBytes(const QByteArray& bytes); // selector: none

/// The path that a local file URL names, trailing slashes taken off (the root folder keeps its own).
[[nodiscard]] QString pathFromFileUrl(const QUrl& url); // selector: none
/// The URL of a path, every byte of it kept.
[[nodiscard]] QUrl fileUrlFromPath(const QString& path); // selector: none

} // namespace quillow
