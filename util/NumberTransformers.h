// Transformers between numbers, booleans and counts.
#pragma once

#include "util/MWValueTransformer.h"

namespace quillow {

/// Whether the integer is not zero, as a boolean; nil gives false. Reverse: 1 for a true input, else 0.
class MWIntToBool final : public MWValueTransformerOf<ValueClass::number, Reverse::allowed> {
public:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
    [[nodiscard]] Boxed reverseTransformedValue(const Boxed& value) const override;
};

/// Whether the integer is zero, as a boolean; nil gives true. Reverse: 1 for a false input, else 0.
class MWNegateIntToBool final : public MWValueTransformerOf<ValueClass::number, Reverse::allowed> {
public:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
    [[nodiscard]] Boxed reverseTransformedValue(const Boxed& value) const override;
};

/// 1 if the integer is not zero, else 0; nil gives 0.
class MW1IfNot0 final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
};

/// 1 for a true input, else 0; nil gives 0. Reverse: whether the long integer is not zero, as a boolean.
class MWNumberBoolToNumberNum final : public MWValueTransformerOf<ValueClass::number, Reverse::allowed> {
public:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
    [[nodiscard]] Boxed reverseTransformedValue(const Boxed& value) const override;
};

/// The input times the reference, in single precision; nil gives nil.
class MWValueMultipliedBy final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    explicit MWValueMultipliedBy(const Boxed& value)
        : myRefValue(value) {} // selector: initWithValue:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    Boxed myRefValue;
};

/// The row height for a font size in points: size times 1.4 plus 2, in single precision, truncated towards zero;
/// nil gives nil.
class MWHeightForFontSize final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    /// deliberate: declared as in its siblings, but never set or read; the height needs no reference.
    [[maybe_unused]] Boxed myRefValue;
};

/// 1 if the array has more than one element, else 0; nil gives 0. Reverse: always a new empty array.
class MWOneIfOneInArray final : public MWValueTransformerOf<ValueClass::number, Reverse::allowed> {
public:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
    [[nodiscard]] Boxed reverseTransformedValue(const Boxed& value) const override;
};

} // namespace quillow
