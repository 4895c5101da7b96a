// Port: pictures from bytes and back.
#pragma once

#include "base/Image.h"

#include <QByteArray>

#include <optional>

namespace quillow {

class ImageCodec {
public:
    virtual ~ImageCodec() = default;
    /// The picture that the bytes of a picture file hold, or nothing.
    [[nodiscard]] virtual std::optional<Image> imageWithData(const QByteArray& bytes) const = 0;
    /// The picture as a TIFF file; nothing for an empty picture.
    [[nodiscard]] virtual std::optional<QByteArray> TIFFRepresentation(const Image& image) const = 0;
};

} // namespace quillow
