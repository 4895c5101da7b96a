#include "util/Base64Transforms.h"

#include "base/Base64.h"

#include <QStringView>

namespace quillow {
namespace {

/// Keeps the input. execute() returns std::nullopt until the input is set.
class InputTransform : public SecTransform {
public:
    [[nodiscard]] bool setAttribute(const char16_t* name, const QByteArray& value) final {
        if (QStringView(name) != QStringView(kSecTransformInputAttributeName)) return false;
        input_ = value;
        return true;
    }
    [[nodiscard]] std::optional<QByteArray> execute() final { return input_ ? transformed(*input_) : std::nullopt; }

private:
    [[nodiscard]] virtual std::optional<QByteArray> transformed(const QByteArray& input) const = 0;

    std::optional<QByteArray> input_;
};

class EncodeTransform final : public InputTransform {
    [[nodiscard]] std::optional<QByteArray> transformed(const QByteArray& input) const override {
        return input.toBase64();
    }
};

class DecodeTransform final : public InputTransform {
    [[nodiscard]] std::optional<QByteArray> transformed(const QByteArray& input) const override {
        return bytesFromBase64(input, Base64Space::lineEnds);
    }
};

} // namespace

std::unique_ptr<SecTransform> makeBase64EncodeTransform() {
    return std::make_unique<EncodeTransform>();
}

std::unique_ptr<SecTransform> makeBase64DecodeTransform() {
    return std::make_unique<DecodeTransform>();
}

} // namespace quillow
