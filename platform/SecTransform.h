// Port: a transform of bytes, as the platform's security service makes them: it is given its input and then executed.
#pragma once

#include <QByteArray>

#include <optional>

namespace quillow {

/// The name of the attribute that holds the input.
inline constexpr char16_t kSecTransformInputAttributeName[] = u"input";

class SecTransform {
public:
    virtual ~SecTransform() = default;
    /// False when the transform has no such attribute or does not take the value.
    [[nodiscard]] virtual bool setAttribute(const char16_t* name, const QByteArray& value) = 0;
    /// The output, or nothing when the input cannot be transformed.
    [[nodiscard]] virtual std::optional<QByteArray> execute() = 0;
};

} // namespace quillow
