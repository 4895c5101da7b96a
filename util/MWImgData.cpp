#include "util/MWImgData.h"

#include "platform/ImageCodec.h"

namespace quillow {

Boxed MWImgData::transformedValue(const Boxed& value) const {
    if (value.isNil()) return Image();
    const auto bytes = value.data();
    if (!bytes) return {};
    const auto image = imageCodec_.imageWithData(*bytes);
    return image ? Boxed(*image) : Boxed();
}

Boxed MWImgData::reverseTransformedValue(const Boxed& value) const {
    const auto image = value.image();
    return image ? Boxed(imageCodec_.TIFFRepresentation(*image)) : Boxed();
}

} // namespace quillow
