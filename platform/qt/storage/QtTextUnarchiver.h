// Reads styled text from archives, keyed or in the older unkeyed form.
#pragma once

#include "platform/TextUnarchiver.h"

namespace quillow {

class QtTextUnarchiver final : public TextUnarchiver {
public:
    /// Also accepts a root that is a plain string.
    [[nodiscard]] std::optional<QString> stringOfArchivedText(const QByteArray& archive) const override;
};

} // namespace quillow
