// Pictures by Qt's readers; TIFF files by a writer of our own.
#pragma once

#include "platform/ImageCodec.h"

namespace quillow {

class QtImageCodec final : public ImageCodec {
public:
    /// Larger pictures are none, in pixels: the bytes are not trusted.
    static constexpr qint64 kMaximumPixels = qint64{64} << 20;

    /// Every format that Qt was built with or has plug-ins for, and the TIFF files that are written here.
    [[nodiscard]] std::optional<Image> imageWithData(const QByteArray& bytes) const override;
    /// Baseline TIFF 6.0: little-endian, one uncompressed strip of 8-bit RGB and unassociated alpha.
    [[nodiscard]] std::optional<QByteArray> TIFFRepresentation(const Image& image) const override;
};

} // namespace quillow
