#include "util/NumberTransformers.h"

#include <cstdint>

namespace quillow {

Boxed MWIntToBool::transformedValue(const Boxed& value) const {
    return value.intValue() != 0;
}

Boxed MWIntToBool::reverseTransformedValue(const Boxed& value) const {
    return std::int32_t{value.boolValue()};
}

Boxed MWNegateIntToBool::transformedValue(const Boxed& value) const {
    return value.intValue() == 0;
}

Boxed MWNegateIntToBool::reverseTransformedValue(const Boxed& value) const {
    return std::int32_t{!value.boolValue()};
}

Boxed MW1IfNot0::transformedValue(const Boxed& value) const {
    return std::int32_t{value.intValue() != 0};
}

Boxed MWNumberBoolToNumberNum::transformedValue(const Boxed& value) const {
    return std::int32_t{value.boolValue()};
}

Boxed MWNumberBoolToNumberNum::reverseTransformedValue(const Boxed& value) const {
    return value.longValue() != 0;
}

Boxed MWValueMultipliedBy::transformedValue(const Boxed& value) const {
    return value.isNil() ? Boxed() : Boxed(value.floatValue() * myRefValue.floatValue());
}

Boxed MWHeightForFontSize::transformedValue(const Boxed& value) const {
    if (value.isNil()) return {};
    return Boxed(value.floatValue() * 1.4F + 2.0F).intValue();
}

Boxed MWOneIfOneInArray::transformedValue(const Boxed& value) const {
    // deliberate: an array of exactly one element gives 0, despite the name; the bindings use it to test for "several".
    const auto array = value.array();
    return std::int32_t{array && array->size() > 1};
}

Boxed MWOneIfOneInArray::reverseTransformedValue(const Boxed& /*value*/) const {
    return Boxed::Array();
}

} // namespace quillow
