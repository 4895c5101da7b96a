#include "engines/pdf/fonts/fontfiles/CffDict.h"

#include <algorithm>
#include <cmath>

namespace quillow::pdf {
namespace {

constexpr std::uint8_t kEscape = 12;
constexpr std::uint8_t kLastOperator = 21;
constexpr std::uint8_t kShort = 28;
constexpr std::uint8_t kLong = 29;
constexpr std::uint8_t kReal = 30;

// Half bytes of a real number (table 5).
constexpr unsigned kPoint = 0xA;
constexpr unsigned kExponent = 0xB;
constexpr unsigned kNegativeExponent = 0xC;
constexpr unsigned kMinus = 0xE;
constexpr unsigned kEnd = 0xF;

/// Larger exponents say no more: fonts have numbers from 0.00001 to some thousands.
constexpr int kLargestExponent = 30;

/// A real number in the making.
class Real {
public:
    void add(unsigned halfByte) {
        if (halfByte <= 9 && !hasExponent_)
            addDigit(static_cast<int>(halfByte));
        else if (halfByte <= 9)
            exponent_ = std::min(exponent_ * 10 + static_cast<int>(halfByte), kLargestExponent);
        else if (halfByte == kPoint)
            hasPoint_ = true;
        else if (halfByte == kMinus)
            isNegative_ = true;
        else if (halfByte == kExponent || halfByte == kNegativeExponent) {
            hasExponent_ = true;
            isSmall_ = halfByte == kNegativeExponent;
        }
    }

    [[nodiscard]] double value() const {
        const double number = digits_ * std::pow(10.0, (isSmall_ ? -exponent_ : exponent_) - decimals_);
        return isNegative_ ? -number : number;
    }

private:
    void addDigit(int digit) {
        if (hasPoint_ && decimals_ == kLargestExponent) return;
        digits_ = digits_ * 10 + digit;
        if (hasPoint_) ++decimals_;
    }

    double digits_ = 0;
    int decimals_ = 0;
    int exponent_ = 0;
    bool hasPoint_ = false;
    bool hasExponent_ = false;
    bool isNegative_ = false;
    bool isSmall_ = false;
};

} // namespace

bool CffDictReader::next() {
    count_ = 0;
    while (!cursor_.atEnd()) {
        const std::uint8_t byte = cursor_.u8();
        if (byte <= kLastOperator) {
            operation_ = static_cast<CffOperator>(byte == kEscape ? kEscape << 8 | cursor_.u8() : byte);
            return true;
        }
        push(readOperand(byte));
    }
    return false;
}

double CffDictReader::readOperand(std::uint8_t first) {
    if (first == kShort) return cursor_.i16();
    if (first == kLong) return cursor_.i32();
    if (first == kReal) return readReal();
    if (first >= 32 && first <= 246) return first - 139;
    if (first >= 247 && first <= 250) return (first - 247) * 256 + cursor_.u8() + 108;
    if (first >= 251 && first <= 254) return -(first - 251) * 256 - cursor_.u8() - 108;
    return 0; // reserved
}

double CffDictReader::readReal() {
    Real real;
    while (!cursor_.atEnd()) {
        const std::uint8_t byte = cursor_.u8();
        if (byte >> 4 == kEnd) break;
        real.add(byte >> 4);
        if ((byte & 0xF) == kEnd) break;
        real.add(byte & 0xF);
    }
    return real.value();
}

/// More operands than allowed are dropped.
void CffDictReader::push(double operand) {
    if (count_ < kMostOperands) operands_[count_++] = operand;
}

std::size_t CffDictReader::offset(std::size_t index) const {
    constexpr double kLargest = 0x7FFFFFFF;
    const double value = operand(index);
    return value > 0 && value <= kLargest ? static_cast<std::size_t>(value) : 0;
}

} // namespace quillow::pdf
