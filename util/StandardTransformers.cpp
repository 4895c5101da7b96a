#include "util/StandardTransformers.h"

#include "util/BookmarkTransformers.h"
#include "util/CollectionTransformers.h"
#include "util/ComparisonTransformers.h"
#include "util/MWDateTagElaborated.h"
#include "util/MWImgData.h"
#include "util/MWUnarchivieFromDataToText.h"
#include "util/NumberTransformers.h"
#include "util/StringTransformers.h"

#include <memory>

namespace quillow {

void registerStandardTransformers(ValueTransformerRegistry& registry, BookmarkStore& bookmarkStore, const Clock& clock,
                                  const ImageCodec& imageCodec, const TextUnarchiver& textUnarchiver) {
    registry.setValueTransformer(std::make_shared<MWImgData>(imageCodec), QStringLiteral("MWImgData"));
    registry.setValueTransformer(std::make_shared<MWIntToBool>(), QStringLiteral("MWIntToBool"));
    registry.setValueTransformer(std::make_shared<MWNegateIntToBool>(), QStringLiteral("MWNegateIntToBool"));
    registry.setValueTransformer(std::make_shared<MWOneIfOneInArray>(), QStringLiteral("MWOneIfOneInArray"));
    registry.setValueTransformer(std::make_shared<MWPathFromBookmark>(bookmarkStore),
                                 QStringLiteral("MWPathFromBookmark"));
    registry.setValueTransformer(std::make_shared<MWNameFromBookmark>(bookmarkStore),
                                 QStringLiteral("MWNameFromBookmark"));
    registry.setValueTransformer(std::make_shared<MW1IfNot0>(), QStringLiteral("MW1IfNot0"));
    registry.setValueTransformer(std::make_shared<MWNumberBoolToNumberNum>(),
                                 QStringLiteral("MWNumberBoolToNumberNum"));
    registry.setValueTransformer(std::make_shared<MWValueIsEqualToRef>(0), QStringLiteral("MWValueIsEqualToRef"));
    registry.setValueTransformer(std::make_shared<MWValueIsGreaterOfRef>(0), QStringLiteral("MWValueIsGreaterOfRef"));
    registry.setValueTransformer(std::make_shared<MWValueIsSmallerOfRef>(0), QStringLiteral("MWValueIsSmallerOfRef"));
    registry.setValueTransformer(std::make_shared<MWValueNotEqualToRef>(0), QStringLiteral("MWValueNotEqualToRef"));
    registry.setValueTransformer(std::make_shared<MWReturnInitStr>(std::nullopt), QStringLiteral("MWReturnInitStr"));
    registry.setValueTransformer(std::make_shared<MWValueMultipliedBy>(Boxed()), QStringLiteral("MWValueMultipliedBy"));
    registry.setValueTransformer(std::make_shared<MWHeightForFontSize>(), QStringLiteral("MWHeightForFontSize"));
    registry.setValueTransformer(std::make_shared<MWValueIsEqualToStr>(std::nullopt),
                                 QStringLiteral("MWValueIsEqualToStr"));
    registry.setValueTransformer(std::make_shared<MWUnarchivieFromDataToText>(textUnarchiver),
                                 QStringLiteral("MWUnarchivieFromDataToText"));
    registry.setValueTransformer(std::make_shared<MWValueIsInSet>(Boxed::Array()), QStringLiteral("MWValueIsInSet"));
    registry.setValueTransformer(std::make_shared<MWValueIsInArray>(Boxed::Array()),
                                 QStringLiteral("MWValueIsInArray"));
    registry.setValueTransformer(std::make_shared<MWDateTagElaborated>(clock), QStringLiteral("MWDateTagElaborated"));
    registry.setValueTransformer(std::make_shared<MWEmptyTrimmedString>(), QStringLiteral("MWEmptyTrimmedString"));
    registry.setValueTransformer(std::make_shared<MWFilledTrimmedString>(), QStringLiteral("MWFilledTrimmedString"));
}

} // namespace quillow
