// The format of the settings file: an INI file with one section. Every value carries its type, because plain INI
// values are all strings. Each line is "key=<type>:<text>", keys and strings in printable ASCII (BoxedText.h):
//   b: true or false    i: an integer    f: a float    g: a double    s: a string
//   x: bytes in Base64  t: an instant in UTC, ISO 8601 with milliseconds
//   m: an image, "width,height,pixels in Base64"
//   j: an array or dictionary, its CBOR bytes in Base64
#pragma once

#include "base/Boxed.h"

#include <QByteArray>

namespace quillow {

enum class FileCondition { whole, damaged };

struct DefaultsFileContent {
    Boxed::Dictionary values;
    FileCondition condition = FileCondition::whole;
};

/// Reads every readable line. The content is marked as damaged if there are other lines.
[[nodiscard]] DefaultsFileContent readDefaultsFile(const QByteArray& bytes);
[[nodiscard]] QByteArray defaultsFileBytes(const Boxed::Dictionary& values);

} // namespace quillow
