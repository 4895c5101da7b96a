// Transformers that compare a number with a reference fixed at construction.
#pragma once

#include "util/MWValueTransformer.h"

#include <cstdint>

namespace quillow {

/// 1 if the input equals the reference, else 0. The input is narrowed to 16 bits before the comparison; nil gives nil.
/// Reverse: the reference for a true input, else nil.
class MWValueIsEqualToRef final : public MWValueTransformerOf<ValueClass::number, Reverse::allowed> {
public:
    explicit MWValueIsEqualToRef(std::int32_t value)
        : myRefValue(value) {} // selector: initWithValue:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
    [[nodiscard]] Boxed reverseTransformedValue(const Boxed& value) const override;

private:
    std::int32_t myRefValue;
};

/// 1 if the input is greater than the reference, else 0. The input is narrowed to 16 bits before the comparison;
/// nil gives nil.
class MWValueIsGreaterOfRef final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    explicit MWValueIsGreaterOfRef(std::int32_t value)
        : myRefValue(value) {} // selector: initWithValue:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    std::int32_t myRefValue;
};

/// 1 if the input is smaller than the reference, else 0. The input is narrowed to 16 bits before the comparison;
/// nil gives nil.
class MWValueIsSmallerOfRef final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    explicit MWValueIsSmallerOfRef(std::int32_t value)
        : myRefValue(value) {} // selector: initWithValue:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    std::int32_t myRefValue;
};

/// 1 if the input differs from the reference, else 0. The input is narrowed to 16 bits before the comparison; nil
/// gives nil.
class MWValueNotEqualToRef final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    explicit MWValueNotEqualToRef(std::int32_t value)
        : myRefValue(value) {} // selector: initWithValue:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    std::int32_t myRefValue;
};

} // namespace quillow
