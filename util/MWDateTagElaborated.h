// Transformer from a text with date tags to the text with the present date and time in their places.
#pragma once

#include "util/MWValueTransformer.h"

namespace quillow {

class Clock;

/// Replaces "<yy>" and "<YY>" (year of two digits and in full), "<mm>", "<dd>", "<hh>", "<ii>" (minute) and "<ss>" by the clock's
/// present local time. Case counts: "<MM>" stays. Nil gives the empty string.
class MWDateTagElaborated final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWDateTagElaborated(const Clock& clock)
        : clock_(clock) {} // selector: init
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    const Clock& clock_;
};

} // namespace quillow
