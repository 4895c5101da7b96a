// Port: what comes with the program: its translations, of which only "Clear Log" is looked up, and its resources.
#pragma once

#include <QString>

#include <optional>

namespace quillow {

class Bundle {
public:
    virtual ~Bundle() = default;
    /// The translation of the key; where there is none, `value`, and the key itself where `value` is empty.
    [[nodiscard]] virtual QString localizedStringForKey(const QString& key, const QString& value) const = 0;

    /// The path of a file among the program's own resources, or nothing when there is none of that name and type ("pdf").
    [[nodiscard]] virtual std::optional<QString> pathForResource(const QString& name, const QString& ofType) const = 0;
};

} // namespace quillow
