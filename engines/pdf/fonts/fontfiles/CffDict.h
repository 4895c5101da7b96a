// A DICT of the Compact Font Format: operators behind their operands (Technical Note 5176, 4).
#pragma once

#include "text/Bytes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillow::pdf {

/// Operators that text needs. Those of two bytes have the escape byte 12 as their high byte.
enum class CffOperator : std::uint16_t {
    fontBBox = 5,
    charset = 15,
    encoding = 16,
    charStrings = 17,
    privateDict = 18,
    subroutines = 19,
    defaultWidthX = 20,
    nominalWidthX = 21,
    fontMatrix = 12 << 8 | 7,
    registryOrderingSupplement = 12 << 8 | 30,
    fontDicts = 12 << 8 | 36,
    fontDictSelect = 12 << 8 | 37
};

/// Reads a DICT entry by entry.
class CffDictReader {
public:
    explicit CffDictReader(std::string_view bytes)
        : cursor_(bytes) {}

    /// Goes to the next entry. False at the end.
    [[nodiscard]] bool next();
    [[nodiscard]] CffOperator operation() const { return operation_; }
    [[nodiscard]] std::size_t operandCount() const { return count_; }
    /// An operand; 0 if it is missing.
    [[nodiscard]] double operand(std::size_t index) const { return index < count_ ? operands_[index] : 0; }
    /// An operand that is an offset, a size or a string number; 0 if it is missing or none of these.
    [[nodiscard]] std::size_t offset(std::size_t index) const;

private:
    /// 4, "Dict Data".
    static constexpr std::size_t kMostOperands = 48;

    [[nodiscard]] double readOperand(std::uint8_t first);
    [[nodiscard]] double readReal();
    void push(double operand);

    text::ByteCursor cursor_;
    CffOperator operation_{};
    std::size_t count_ = 0;
    std::array<double, kMostOperands> operands_{};
};

} // namespace quillow::pdf
