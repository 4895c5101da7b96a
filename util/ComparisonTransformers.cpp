#include "util/ComparisonTransformers.h"

namespace quillow {

namespace {

/// deliberate: all four compare the input as a 16-bit number, so that 65537 compares as 1. The bindings rely on this.
std::int32_t narrowed(const Boxed& value) {
    return value.shortValue();
}

} // namespace

Boxed MWValueIsEqualToRef::transformedValue(const Boxed& value) const {
    return value.isNil() ? Boxed() : Boxed(std::int32_t{narrowed(value) == myRefValue});
}

Boxed MWValueIsEqualToRef::reverseTransformedValue(const Boxed& value) const {
    return value.boolValue() ? Boxed(myRefValue) : Boxed();
}

Boxed MWValueIsGreaterOfRef::transformedValue(const Boxed& value) const {
    return value.isNil() ? Boxed() : Boxed(std::int32_t{narrowed(value) > myRefValue});
}

Boxed MWValueIsSmallerOfRef::transformedValue(const Boxed& value) const {
    return value.isNil() ? Boxed() : Boxed(std::int32_t{narrowed(value) < myRefValue});
}

Boxed MWValueNotEqualToRef::transformedValue(const Boxed& value) const {
    return value.isNil() ? Boxed() : Boxed(std::int32_t{narrowed(value) != myRefValue});
}

} // namespace quillow
