// Port: the texts that the program looks up in its translations. Only "Clear Log" is.
#pragma once

#include <QString>

namespace quillow {

class Bundle {
public:
    virtual ~Bundle() = default;
    /// The translation of the key; where there is none, `value`, and the key itself where `value` is empty.
    [[nodiscard]] virtual QString localizedStringForKey(const QString& key, const QString& value) const = 0;
};

} // namespace quillow
