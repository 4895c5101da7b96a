// The settings file's form: an INI file of one section in which every value carries its type, because INI alone gives all back
// as strings. Each line is "key=<type>:<text>", keys and strings in printing ASCII (BoxedText.h):
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

/// Every line that can be read; damaged when there are others.
[[nodiscard]] DefaultsFileContent readDefaultsFile(const QByteArray& bytes);
[[nodiscard]] QByteArray defaultsFileBytes(const Boxed::Dictionary& values);

} // namespace quillow
