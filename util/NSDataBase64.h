// Base64 encoding and decoding in the form of a category of the data class: the instance is the first parameter.
// The alphabet is the standard one of RFC 4648, with padding. Encoded text is one line; decoded text may have line
// ends.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillow {

class SecTransform;

namespace NSDataBase64 {

[[nodiscard]] std::optional<QString> base64EncodedString(const QByteArray& data); // selector: base64EncodedString
[[nodiscard]] std::optional<QString> base64enc(const QByteArray& data);           // selector: base64enc

// All four decode, including the one named "enc". They return std::nullopt for nil, for text that is not ASCII and
// for text that is not canonical Base64. The empty text gives empty bytes.
[[nodiscard]] std::optional<QByteArray>
dataFromBase64String(const std::optional<QString>& text); // selector: dataFromBase64String:
[[nodiscard]] std::optional<QByteArray>
dataWithBase64EncodedString(const std::optional<QString>& text); // selector: dataWithBase64EncodedString:
[[nodiscard]] std::optional<QByteArray> dataBase64enc(const std::optional<QString>& text); // selector: dataBase64enc:
[[nodiscard]] std::optional<QByteArray> base64dec(const std::optional<QString>& text);     // selector: base64dec:

/// The result of the transform for the data; std::nullopt without data or transform, or if the transform rejects
/// the data or fails.
[[nodiscard]] std::optional<QByteArray> transformExecuter(const std::optional<QByteArray>& data,
                                                          SecTransform* trans); // selector: transformExecuter:trans:

} // namespace NSDataBase64
} // namespace quillow
