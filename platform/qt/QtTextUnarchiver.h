// Styled text out of keyed archives: binary property lists with a table of objects that name one another by unique identifiers.
#pragma once

#include "platform/TextUnarchiver.h"

namespace quillow {

class QtTextUnarchiver final : public TextUnarchiver {
public:
    /// Also the characters of a root that is a plain string.
    [[nodiscard]] std::optional<QString> stringOfArchivedText(const QByteArray& archive) const override;
};

} // namespace quillow
