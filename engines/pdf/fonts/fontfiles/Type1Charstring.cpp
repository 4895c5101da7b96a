#include "engines/pdf/fonts/fontfiles/Type1Charstring.h"

#include "engines/pdf/fonts/fontfiles/Type1Cipher.h"
#include "text/Bytes.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace quillow::pdf {
namespace {

using text::ByteCursor;

enum Operator : std::uint8_t { escape = 12, hsbw = 13, firstNumber = 32 };
enum EscapedOperator : std::uint8_t { sbw = 7, divide = 12 };

/// The first operators and their operands need less.
constexpr std::size_t kBeginning = 64;
constexpr std::size_t kMostOperands = 24; // 6.2

/// Runs a charstring up to the operator that sets the width: it comes first, but for divisions.
class Beginning {
public:
    explicit Beginning(std::string_view plain)
        : cursor_(plain) {}

    [[nodiscard]] std::optional<double> width() {
        while (!cursor_.atEnd()) {
            const std::uint8_t byte = cursor_.u8();
            if (byte >= firstNumber) {
                push(readNumber(byte));
                continue;
            }
            const std::uint8_t escaped = byte == escape ? cursor_.u8() : 0;
            if (byte == hsbw && count_ == 2) return operands_[1];
            if (byte == escape && escaped == sbw && count_ == 4) return operands_[2];
            if (byte != escape || escaped != divide || !divideOperands()) return {};
        }
        return {};
    }

private:
    [[nodiscard]] double readNumber(std::uint8_t first) {
        if (first <= 246) return first - 139;
        if (first <= 250) return (first - 247) * 256 + cursor_.u8() + 108;
        if (first <= 254) return -(first - 251) * 256 - cursor_.u8() - 108;
        return cursor_.i32();
    }

    void push(double operand) {
        if (count_ < kMostOperands) operands_[count_++] = operand;
    }

    [[nodiscard]] bool divideOperands() {
        if (count_ < 2 || operands_[count_ - 1] == 0) return false;
        --count_;
        operands_[count_ - 1] /= operands_[count_];
        return true;
    }

    ByteCursor cursor_;
    std::array<double, kMostOperands> operands_{};
    std::size_t count_ = 0;
};

} // namespace

std::optional<double> widthOfType1Charstring(std::string_view charstring, int randomBytes) {
    if (randomBytes < 0) return Beginning(charstring.substr(0, kBeginning)).width();
    const auto skipped = static_cast<std::size_t>(randomBytes);
    std::array<char, kBeginning> plain{};
    const std::size_t size = std::min(charstring.size(), plain.size());
    Type1Cipher cipher(Type1Cipher::kCharstringKey);
    for (std::size_t i = 0; i < size; ++i)
        plain[i] = static_cast<char>(cipher.decrypt(static_cast<std::uint8_t>(charstring[i])));
    if (skipped >= size) return {};
    return Beginning({plain.data() + skipped, size - skipped}).width();
}

} // namespace quillow::pdf
