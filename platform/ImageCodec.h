// Port: pictures from bytes and back.
#pragma once

#include "base/Image.h"

#include <QByteArray>

#include <optional>

namespace quillow {

class ImageCodec {
public:
    virtual ~ImageCodec() = default;
    /// The picture in the bytes of an image file, or std::nullopt.
    [[nodiscard]] virtual std::optional<Image> imageWithData(const QByteArray& bytes) const = 0;
    /// The picture as a TIFF file; std::nullopt for an empty picture.
    [[nodiscard]] virtual std::optional<QByteArray> TIFFRepresentation(const Image& image) const = 0;
};

} // namespace quillow
