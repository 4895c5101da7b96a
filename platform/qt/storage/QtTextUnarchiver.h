// Styled text out of archives, keyed ones and those of the older, unkeyed form.
#pragma once

#include "platform/TextUnarchiver.h"

namespace quillow {

class QtTextUnarchiver final : public TextUnarchiver {
public:
    /// Also the characters of a root that is a plain string.
    [[nodiscard]] std::optional<QString> stringOfArchivedText(const QByteArray& archive) const override;
};

} // namespace quillow
