// Reads pictures with Qt's readers and writes TIFF files with its own writer.
#pragma once

#include "platform/ImageCodec.h"

namespace quillow {

class QtImageCodec final : public ImageCodec {
public:
    /// The maximum size of a picture in pixels. Larger pictures are rejected, because the bytes are not trusted.
    static constexpr qint64 kMaximumPixels = qint64{64} << 20;

    /// Reads every format that Qt was built with or has plug-ins for, and the TIFF files that TIFFRepresentation()
    /// writes.
    [[nodiscard]] std::optional<Image> imageWithData(const QByteArray& bytes) const override;
    /// Baseline TIFF 6.0: little-endian, one uncompressed strip of 8-bit RGB and unassociated alpha.
    [[nodiscard]] std::optional<QByteArray> TIFFRepresentation(const Image& image) const override;
};

} // namespace quillow
