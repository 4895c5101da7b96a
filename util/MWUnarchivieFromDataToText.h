// Transformer from an archived styled text to its plain characters.
#pragma once

#include "util/MWValueTransformer.h"

namespace quillow {

class TextUnarchiver;

/// The plain string of the styled text in an archive, keyed or unkeyed. Nil, and bytes without a styled text, give nil.
class MWUnarchivieFromDataToText final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWUnarchivieFromDataToText(const TextUnarchiver& unarchiver)
        : unarchiver_(unarchiver) {} // selector: init
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    const TextUnarchiver& unarchiver_;
    /// deliberate: declared as in its siblings, but never set or read.
    [[maybe_unused]] Boxed myRefValue;
};

} // namespace quillow
