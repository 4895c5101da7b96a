// Port: the files installed with the program: its translations (only "Clear Log" is looked up) and its resources.
#pragma once

#include <QString>

#include <optional>

namespace quillow {

class Bundle {
public:
    virtual ~Bundle() = default;
    /// The translation of the key; if there is none, `value`; if `value` is empty, the key itself.
    [[nodiscard]] virtual QString localizedStringForKey(const QString& key, const QString& value) const = 0;

    /// The path of a file among the program's own resources, or std::nullopt if none has that name and type ("pdf").
    [[nodiscard]] virtual std::optional<QString> pathForResource(const QString& name, const QString& ofType) const = 0;
};

} // namespace quillow
