// A value that may be absent: what defaults, observed properties and bindings pass around. Nil is a state of its own: an
// empty string, empty bytes and a zero are values.
#pragma once

#include "base/Image.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

namespace quillow {

class KeyValueLookup;

class Boxed { // selector: none
public:
    /// An object that is read by key.
    using Object = std::shared_ptr<const KeyValueLookup>;
    using Array = QList<Boxed>;
    using Dictionary = QMap<QString, Boxed>;

    Boxed() = default; ///< nil
    Boxed(std::nullptr_t) {}
    Boxed(std::nullopt_t) {}
    template <std::same_as<bool> B>
    Boxed(B value)
        : value_(value) {}
    Boxed(std::int32_t value)
        : value_(std::int64_t{value}) {}
    Boxed(std::int64_t value)
        : value_(value) {}
    Boxed(float value)
        : value_(value) {}
    Boxed(double value)
        : value_(value) {}
    Boxed(const QString& value)
        : value_(value) {}
    Boxed(const QByteArray& value)
        : value_(value) {}
    Boxed(const QDateTime& value)
        : value_(value) {}
    Boxed(const Image& value)
        : value_(value) {}
    Boxed(const Array& value)
        : value_(value) {}
    Boxed(const Dictionary& value)
        : value_(value) {}
    /// No object becomes nil.
    Boxed(const Object& value);
    /// Nothing becomes nil.
    Boxed(const std::optional<QString>& value);
    Boxed(const std::optional<QByteArray>& value);

    [[nodiscard]] bool isNil() const { return std::holds_alternative<std::monostate>(value_); }

    // Numbers, as number and string objects answer them. Numbers narrow as integers do, fractions are cut off towards zero,
    // values out of the 64-bit range stop at its ends. A string answers the number that it begins with, after blanks: 0
    // when there is none, the nearest value when it is out of range. Nil and every other type answer 0.
    [[nodiscard]] std::int16_t shortValue() const;
    [[nodiscard]] std::int32_t intValue() const;
    [[nodiscard]] std::int64_t longValue() const;
    [[nodiscard]] float floatValue() const;
    [[nodiscard]] double doubleValue() const;
    /// Not 0; for a string: it begins, after blanks, one sign and zeros, with one of YyTt or 1 to 9.
    [[nodiscard]] bool boolValue() const;

    // The value when it has that type, else nothing.
    [[nodiscard]] std::optional<QString> string() const { return get<QString>(); }
    [[nodiscard]] std::optional<QByteArray> data() const { return get<QByteArray>(); }
    [[nodiscard]] std::optional<QDateTime> date() const { return get<QDateTime>(); }
    [[nodiscard]] std::optional<Image> image() const { return get<Image>(); }
    [[nodiscard]] std::optional<Array> array() const { return get<Array>(); }
    [[nodiscard]] std::optional<Dictionary> dictionary() const { return get<Dictionary>(); }
    [[nodiscard]] std::optional<Object> object() const { return get<Object>(); }

    /// The value with its type, for those who store it.
    using Value = std::variant<std::monostate, bool, std::int64_t, float, double, QString, QByteArray, QDateTime, Image,
                               Array, Dictionary, Object>;
    [[nodiscard]] const Value& value() const { return value_; }

    /// Same type and same value: 1, true and 1.0 differ, and so do nil and every empty value. An object equals itself.
    friend bool operator==(const Boxed& left, const Boxed& right);

private:
    template <class T>
    [[nodiscard]] std::optional<T> get() const {
        const T* value = std::get_if<T>(&value_);
        return value ? std::optional<T>(*value) : std::nullopt;
    }

    Value value_;
};

} // namespace quillow
