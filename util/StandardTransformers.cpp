#include "util/StandardTransformers.h"

#include "util/BookmarkTransformers.h"
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
    registry.setValueTransformer(std::make_shared<MWHeightForFontSize>(), QStringLiteral("MWHeightForFontSize"));
    registry.setValueTransformer(std::make_shared<MWUnarchivieFromDataToText>(textUnarchiver),
                                 QStringLiteral("MWUnarchivieFromDataToText"));
    registry.setValueTransformer(std::make_shared<MWDateTagElaborated>(clock), QStringLiteral("MWDateTagElaborated"));
    registry.setValueTransformer(std::make_shared<MWEmptyTrimmedString>(), QStringLiteral("MWEmptyTrimmedString"));
    registry.setValueTransformer(std::make_shared<MWFilledTrimmedString>(), QStringLiteral("MWFilledTrimmedString"));
}

} // namespace quillow
