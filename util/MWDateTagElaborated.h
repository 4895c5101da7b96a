// Transformer that replaces the date tags of a text by the current date and time.
#pragma once

#include "util/MWValueTransformer.h"

namespace quillow {

class Clock;

/// Replaces "<yy>" and "<YY>" (year of two digits and in full), "<mm>", "<dd>", "<hh>", "<ii>" (minute) and "<ss>"
/// by the clock's current local time. Tags are case-sensitive: "<MM>" stays. Nil gives the empty string.
class MWDateTagElaborated final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWDateTagElaborated(const Clock& clock)
        : clock_(clock) {} // selector: init
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    const Clock& clock_;
};

} // namespace quillow
