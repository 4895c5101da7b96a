// Base64 of bytes and back, as a category of the data class offers them: the instance is the first parameter. The alphabet is
// RFC 4648's standard one, with padding; text goes out in one line and comes in with or without line ends.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillow {

class SecTransform;

namespace NSDataBase64 {

[[nodiscard]] std::optional<QString> base64EncodedString(const QByteArray& data); // selector: base64EncodedString
[[nodiscard]] std::optional<QString> base64enc(const QByteArray& data);           // selector: base64enc

// These four decode, the one named "enc" too. Nil, text that is not ASCII and text that is no canonical Base64 give nothing; the
// empty text gives empty bytes.
[[nodiscard]] std::optional<QByteArray>
dataFromBase64String(const std::optional<QString>& text); // selector: dataFromBase64String:
[[nodiscard]] std::optional<QByteArray>
dataWithBase64EncodedString(const std::optional<QString>& text); // selector: dataWithBase64EncodedString:
[[nodiscard]] std::optional<QByteArray> dataBase64enc(const std::optional<QString>& text); // selector: dataBase64enc:
[[nodiscard]] std::optional<QByteArray> base64dec(const std::optional<QString>& text);     // selector: base64dec:

/// What the transform makes of the data; nothing without a transform, or when it refuses the data or fails.
[[nodiscard]] std::optional<QByteArray> transformExecuter(const std::optional<QByteArray>& data,
                                                          SecTransform* trans); // selector: transformExecuter:trans:

} // namespace NSDataBase64
} // namespace quillow
