#include "engines/pdf/fonts/fontfiles/CharstringWidth.h"

#include "text/Bytes.h"

#include <array>
#include <cstddef>

namespace quillow::pdf {
namespace {

using text::ByteCursor;
using Kind = CharstringWidth::Kind;

// Appendix B.
constexpr std::size_t kMostOperands = 48;
constexpr std::size_t kMostCalls = 10;
/// Calls in all, not one inside the other: the first drawing operator comes after a few.
constexpr int kMostSteps = 1000;

enum Operator : std::uint8_t {
    hstem = 1,
    vstem = 3,
    vmoveto = 4,
    callsubr = 10,
    returns = 11,
    endchar = 14,
    hstemhm = 18,
    hintmask = 19,
    cntrmask = 20,
    rmoveto = 21,
    hmoveto = 22,
    vstemhm = 23,
    shortNumber = 28,
    callgsubr = 29,
    firstNumber = 32
};

/// Runs a charstring up to the first operator that takes the operands off the stack.
class Beginning {
public:
    Beginning(std::string_view charstring, const CffIndex& globalSubroutines, const CffIndex& subroutines)
        : cursor_(charstring)
        , globalSubroutines_(globalSubroutines)
        , subroutines_(subroutines) {}

    [[nodiscard]] CharstringWidth run() {
        for (int steps = 0; steps < kMostSteps; ++steps) {
            if (cursor_.atEnd()) {
                if (!leave()) return {};
                continue;
            }
            const std::uint8_t byte = cursor_.u8();
            if (byte >= firstNumber || byte == shortNumber)
                push(readNumber(byte));
            else if (byte == callsubr || byte == callgsubr) {
                if (!enter(byte == callsubr ? subroutines_ : globalSubroutines_)) return {};
            } else if (byte == returns) {
                if (!leave()) return {};
            } else
                return widthBefore(byte);
        }
        return {};
    }

private:
    [[nodiscard]] double readNumber(std::uint8_t first) {
        if (first == shortNumber) return cursor_.i16();
        if (first <= 246) return first - 139;
        if (first <= 250) return (first - 247) * 256 + cursor_.u8() + 108;
        if (first <= 254) return -(first - 251) * 256 - cursor_.u8() - 108;
        return cursor_.i32() / 65536.0;
    }

    void push(double operand) {
        if (count_ < kMostOperands) operands_[count_++] = operand;
    }

    [[nodiscard]] bool enter(const CffIndex& subroutines) {
        if (count_ == 0 || depth_ == kMostCalls) return false;
        const std::size_t count = subroutines.count();
        const int bias = count < 1240 ? 107 : count < 33900 ? 1131 : 32768; // 4.7
        const double number = operands_[--count_] + bias;
        if (!(number >= 0) || number >= static_cast<double>(count)) return false;
        callers_[depth_++] = cursor_;
        cursor_ = ByteCursor(subroutines[static_cast<std::size_t>(number)]);
        return true;
    }

    [[nodiscard]] bool leave() {
        if (depth_ == 0) return false;
        cursor_ = callers_[--depth_];
        return true;
    }

    /// An operand more than the operator takes is the width.
    [[nodiscard]] CharstringWidth widthBefore(std::uint8_t operation) const {
        switch (operation) {
        case hstem:
        case vstem:
        case hstemhm:
        case vstemhm:
        case hintmask:
        case cntrmask: return widthIf(count_ % 2 == 1);
        case rmoveto: return widthIf(count_ > 2);
        case hmoveto:
        case vmoveto: return widthIf(count_ > 1);
        case endchar: return widthIf(count_ == 1 || count_ == 5); // 5: with the operands of an accented character
        default: return {};
        }
    }

    [[nodiscard]] CharstringWidth widthIf(bool hasWidth) const {
        return hasWidth ? CharstringWidth{Kind::difference, operands_[0]} : CharstringWidth{Kind::usual, 0};
    }

    ByteCursor cursor_;
    const CffIndex& globalSubroutines_;
    const CffIndex& subroutines_;
    std::array<double, kMostOperands> operands_{};
    std::size_t count_ = 0;
    std::array<ByteCursor, kMostCalls> callers_;
    std::size_t depth_ = 0;
};

} // namespace

CharstringWidth widthOfCharstring(std::string_view charstring, const CffIndex& globalSubroutines,
                                  const CffIndex& subroutines) {
    return Beginning(charstring, globalSubroutines, subroutines).run();
}

} // namespace quillow::pdf
