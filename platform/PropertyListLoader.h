// Port: reads a property list from a URL.
#pragma once

#include "base/Boxed.h"

#include <QString>

#include <optional>

namespace quillow {

class PropertyListLoader {
public:
    virtual ~PropertyListLoader() = default;
    /// The root dictionary of the XML or binary property list at the URL, loaded completely and synchronously;
    /// std::nullopt if it cannot be fetched or its root is not a dictionary. Callable from any thread. The data is
    /// not trusted: its size, its depth and the time are limited.
    [[nodiscard]] virtual std::optional<Boxed::Dictionary> dictionaryWithContentsOfURL(const QString& url) const = 0;
};

} // namespace quillow
