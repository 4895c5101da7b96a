// Port: a byte transform in the style of the platform's security service: set the input attribute, then execute.
#pragma once

#include <QByteArray>

#include <optional>

namespace quillow {

/// The name of the attribute that holds the input.
inline constexpr char16_t kSecTransformInputAttributeName[] = u"input";

class SecTransform {
public:
    virtual ~SecTransform() = default;
    /// Returns false if the transform has no such attribute or rejects the value.
    [[nodiscard]] virtual bool setAttribute(const char16_t* name, const QByteArray& value) = 0;
    /// The output, or std::nullopt if the input cannot be transformed.
    [[nodiscard]] virtual std::optional<QByteArray> execute() = 0;
};

} // namespace quillow
