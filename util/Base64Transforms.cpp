#include "util/Base64Transforms.h"

#include <QStringView>

#include <algorithm>
#include <cstdint>

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

/// The value of a character of the alphabet, or -1.
int sextet(char character) {
    if (character >= 'A' && character <= 'Z') return character - 'A';
    if (character >= 'a' && character <= 'z') return character - 'a' + 26;
    if (character >= '0' && character <= '9') return character - '0' + 52;
    if (character == '+') return 62;
    return character == '/' ? 63 : -1;
}

QByteArray withoutLineEnds(const QByteArray& text) {
    QByteArray line = text;
    line.removeIf([](char character) { return character == '\r' || character == '\n'; });
    return line;
}

class DecodeTransform final : public InputTransform {
    [[nodiscard]] std::optional<QByteArray> transformed(const QByteArray& input) const override {
        const QByteArray line = withoutLineEnds(input);
        if (line.size() % 4 != 0) return std::nullopt;
        const qsizetype padding = line.endsWith("==") ? 2 : line.endsWith('=') ? 1 : 0;
        const qsizetype length = line.size() - padding;

        QByteArray bytes;
        bytes.reserve(line.size() / 4 * 3);
        std::uint32_t bits = 0;
        int bitCount = 0;
        for (qsizetype i = 0; i < length; ++i) {
            const int value = sextet(line[i]);
            if (value < 0) return std::nullopt;
            bits = bits << 6 | static_cast<std::uint32_t>(value);
            bitCount += 6;
            if (bitCount < 8) continue;
            bitCount -= 8;
            bytes.append(static_cast<char>(bits >> bitCount & 0xFF));
        }
        const std::uint32_t unused = bits & ((1U << bitCount) - 1);
        return unused == 0 ? std::optional(bytes) : std::nullopt;
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
