// The accessors that convert a value to a number.
#include "base/Boxed.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

namespace quillow {
namespace {

template <class T>
T clampedTo(double number) {
    if (std::isnan(number)) return 0;
    // The largest 64-bit integer is not representable as a double; the power of two above it is.
    constexpr double kLowest = static_cast<double>(std::numeric_limits<T>::min());
    constexpr double kAbove = -kLowest;
    if (number <= kLowest) return std::numeric_limits<T>::min();
    if (number >= kAbove) return std::numeric_limits<T>::max();
    return static_cast<T>(number);
}

/// The ASCII characters after the leading blanks, up to the first other character, which ends any number.
std::string withoutLeadingBlanks(const QString& text) {
    qsizetype start = 0;
    while (start < text.size() && (text[start] == u'\t' || text[start].category() == QChar::Separator_Space))
        ++start;
    std::string ascii;
    for (qsizetype i = start; i < text.size() && text[i].unicode() < 0x80; ++i)
        ascii.push_back(static_cast<char>(text[i].unicode()));
    return ascii;
}

template <class T>
T leadingInteger(const QString& text) {
    const std::string ascii = withoutLeadingBlanks(text);
    const bool isNegative = ascii.starts_with('-');
    const bool hasSign = isNegative || ascii.starts_with('+');
    // from_chars reads a minus sign but not a plus sign, so a plus sign is skipped here. "+-1" is not a number.
    const char* first = ascii.data() + (hasSign && !isNegative ? 1 : 0);
    if (hasSign && !isNegative && ascii.size() > 1 && ascii[1] == '-') return 0;
    T number = 0;
    const auto [end, error] = std::from_chars(first, ascii.data() + ascii.size(), number);
    if (error == std::errc::result_out_of_range)
        return isNegative ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
    return number;
}

template <class T>
T leadingReal(const QString& text) {
    const std::string ascii = withoutLeadingBlanks(text);
    std::size_t sign = ascii.starts_with('+') || ascii.starts_with('-') ? 1 : 0;
    // from_chars also accepts "inf" and "nan", which are not decimal numbers.
    const bool startsDecimal =
        sign < ascii.size() && ((ascii[sign] >= '0' && ascii[sign] <= '9') || ascii[sign] == '.');
    if (!startsDecimal) return 0;
    T number = 0;
    const auto [end, error] = std::from_chars(ascii.data() + sign, ascii.data() + ascii.size(), number);
    if (error == std::errc::result_out_of_range) {
        // Too large or too small: the sign of the exponent decides. Without an exponent, a zero integer part means
        // too small.
        const std::string matched(ascii.data() + sign, end);
        const std::size_t exponent = matched.find_first_of("eE");
        const std::size_t firstDigit = matched.find_first_not_of('0');
        const bool isTiny = exponent != std::string::npos ? matched[exponent + 1] == '-' : matched[firstDigit] == '.';
        number = isTiny ? T{0} : std::numeric_limits<T>::infinity();
    }
    return ascii.starts_with('-') ? -number : number;
}

bool leadingTruth(const QString& text) {
    const std::string ascii = withoutLeadingBlanks(text);
    std::size_t i = ascii.starts_with('+') || ascii.starts_with('-') ? 1 : 0;
    while (i < ascii.size() && ascii[i] == '0')
        ++i;
    return i < ascii.size() && std::string_view("YyTt123456789").find(ascii[i]) != std::string_view::npos;
}

} // namespace

Boxed::Boxed(const Object& value) {
    if (value) value_ = value;
}

Boxed::Boxed(const std::optional<QString>& value) {
    if (value) value_ = *value;
}

Boxed::Boxed(const std::optional<QByteArray>& value) {
    if (value) value_ = *value;
}

std::int64_t Boxed::longValue() const {
    return std::visit(
        [](const auto& value) -> std::int64_t {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_floating_point_v<T>)
                return clampedTo<std::int64_t>(static_cast<double>(value));
            else if constexpr (std::is_integral_v<T>)
                return static_cast<std::int64_t>(value);
            else if constexpr (std::is_same_v<T, QString>)
                return leadingInteger<std::int64_t>(value);
            else
                return 0;
        },
        value_);
}

std::int32_t Boxed::intValue() const {
    if (const auto* text = std::get_if<QString>(&value_)) return leadingInteger<std::int32_t>(*text);
    return static_cast<std::int32_t>(longValue());
}

std::int16_t Boxed::shortValue() const {
    return static_cast<std::int16_t>(intValue());
}

double Boxed::doubleValue() const {
    return std::visit(
        [](const auto& value) -> double {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_arithmetic_v<T>)
                return static_cast<double>(value);
            else if constexpr (std::is_same_v<T, QString>)
                return leadingReal<double>(value);
            else
                return 0;
        },
        value_);
}

float Boxed::floatValue() const {
    if (const auto* text = std::get_if<QString>(&value_)) return leadingReal<float>(*text);
    if (const auto* integer = std::get_if<std::int64_t>(&value_)) return static_cast<float>(*integer);
    return static_cast<float>(doubleValue());
}

bool Boxed::boolValue() const {
    return std::visit(
        [](const auto& value) -> bool {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_arithmetic_v<T>)
                return value != T{};
            else if constexpr (std::is_same_v<T, QString>)
                return leadingTruth(value);
            else
                return false;
        },
        value_);
}

bool operator==(const Boxed& left, const Boxed& right) {
    return left.value_ == right.value_;
}

} // namespace quillow
