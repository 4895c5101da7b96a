#include "util/NSDataBase64.h"

#include "util/Base64Transforms.h"

#include <algorithm>

namespace quillow::NSDataBase64 {
namespace {

std::optional<QByteArray> asciiBytes(const std::optional<QString>& text) {
    if (!text) return std::nullopt;
    const bool isAscii = std::all_of(text->begin(), text->end(), [](QChar unit) { return unit.unicode() < 0x80; });
    return isAscii ? std::optional(text->toLatin1()) : std::nullopt;
}

} // namespace

std::optional<QString> base64EncodedString(const QByteArray& data) {
    const auto encode = makeBase64EncodeTransform();
    const auto output = transformExecuter(data, encode.get());
    return output ? std::optional(QString::fromLatin1(*output)) : std::nullopt;
}

std::optional<QString> base64enc(const QByteArray& data) {
    return base64EncodedString(data);
}

std::optional<QByteArray> dataFromBase64String(const std::optional<QString>& text) {
    return dataWithBase64EncodedString(text);
}

std::optional<QByteArray> dataWithBase64EncodedString(const std::optional<QString>& text) {
    return base64dec(text);
}

// deliberate: it decodes, despite its name; callers rely on that.
std::optional<QByteArray> dataBase64enc(const std::optional<QString>& text) {
    return base64dec(text);
}

std::optional<QByteArray> base64dec(const std::optional<QString>& text) {
    const auto decode = makeBase64DecodeTransform();
    return transformExecuter(asciiBytes(text), decode.get());
}

std::optional<QByteArray> transformExecuter(const std::optional<QByteArray>& data, SecTransform* trans) {
    if (!trans) return std::nullopt;
    // Executed only if the transform has accepted the input.
    if (!data || !trans->setAttribute(kSecTransformInputAttributeName, *data)) return std::nullopt;
    return trans->execute();
}

} // namespace quillow::NSDataBase64
