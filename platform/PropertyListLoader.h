// Port: a property list read from a URL.
#pragma once

#include "base/Boxed.h"

#include <QString>

#include <optional>

namespace quillow {

class PropertyListLoader {
public:
    virtual ~PropertyListLoader() = default;
    /// The dictionary that is the root of the XML or binary property list at the URL, read whole and synchronously; nothing
    /// when it cannot be fetched or is no such dictionary. May be called from any thread. What lies at the URL is not
    /// trusted: size, depth and time are bounded.
    [[nodiscard]] virtual std::optional<Boxed::Dictionary> dictionaryWithContentsOfURL(const QString& url) const = 0;
};

} // namespace quillow
