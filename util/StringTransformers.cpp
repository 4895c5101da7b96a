#include "util/StringTransformers.h"

#include <algorithm>

namespace quillow {

namespace {

bool isFilledWhenTrimmed(const Boxed& value) {
    const auto text = value.string();
    return text && std::any_of(text->begin(), text->end(), [](QChar unit) { return unit != u' '; });
}

} // namespace

Boxed MWReturnInitStr::transformedValue(const Boxed& /*value*/) const {
    return myRefString;
}

Boxed MWValueIsEqualToStr::transformedValue(const Boxed& value) const {
    if (value.isNil()) return {};
    return myRefString.has_value() && value.string() == myRefString;
}

Boxed MWEmptyTrimmedString::transformedValue(const Boxed& value) const {
    return !isFilledWhenTrimmed(value);
}

Boxed MWFilledTrimmedString::transformedValue(const Boxed& value) const {
    return isFilledWhenTrimmed(value);
}

} // namespace quillow
