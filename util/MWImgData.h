// Transformer between the bytes of a picture file and the picture.
#pragma once

#include "util/MWValueTransformer.h"

namespace quillow {

class ImageCodec;

/// The picture in the bytes. Nil gives a new empty picture; bytes that are not a picture give nil. Reverse: the
/// picture as TIFF bytes.
class MWImgData final : public MWValueTransformerOf<ValueClass::image, Reverse::allowed> {
public:
    explicit MWImgData(const ImageCodec& imageCodec)
        : imageCodec_(imageCodec) {} // selector: init
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
    [[nodiscard]] Boxed reverseTransformedValue(const Boxed& value) const override;

private:
    const ImageCodec& imageCodec_;
};

} // namespace quillow
