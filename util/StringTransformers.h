// Transformers of strings.
#pragma once

#include "util/MWValueTransformer.h"

#include <optional>

namespace quillow {

/// The string given at construction, whatever the input.
class MWReturnInitStr final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWReturnInitStr(const std::optional<QString>& string)
        : myRefString(string) {} // selector: initWithString:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    std::optional<QString> myRefString;
};

/// Whether the input equals the reference string, as a boolean; nil gives nil.
/// deliberate: the declared class is string although the result is a boolean.
class MWValueIsEqualToStr final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWValueIsEqualToStr(const std::optional<QString>& string)
        : myRefString(string) {} // selector: initWithString:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    std::optional<QString> myRefString;
};

/// Whether the string has no characters but blanks, as a boolean; tabs and line ends are not blanks. Nil gives true.
class MWEmptyTrimmedString final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
};

/// Whether the string has a character that is not a blank, as a boolean; nil gives false.
class MWFilledTrimmedString final : public MWValueTransformerOf<ValueClass::number, Reverse::notAllowed> {
public:
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;
};

} // namespace quillow
