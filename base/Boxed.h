// A value of one of several types, or nil: the type of defaults, observed properties and bindings. An empty
// string, empty bytes and zero are values, not nil.
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
    /// An object whose values are read by key.
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
    /// A null pointer becomes nil.
    Boxed(const Object& value);
    /// std::nullopt becomes nil.
    Boxed(const std::optional<QString>& value);
    Boxed(const std::optional<QByteArray>& value);

    [[nodiscard]] bool isNil() const { return std::holds_alternative<std::monostate>(value_); }

    // The value as a number. For an integer, fractions are truncated towards zero and clamped to 64 bits, then narrowed
    // like integers, by their low bits. A string gives the number that it begins with after blanks: 0 if there is none,
    // the nearest value if it is out of range. Nil and all other types give 0.
    [[nodiscard]] std::int16_t shortValue() const;
    [[nodiscard]] std::int32_t intValue() const;
    [[nodiscard]] std::int64_t longValue() const;
    [[nodiscard]] float floatValue() const;
    [[nodiscard]] double doubleValue() const;
    /// Whether a number is not 0; whether a string begins, after blanks, an optional sign and zeros, with one of
    /// YyTt or 1 to 9. Nil and all other types give false.
    [[nodiscard]] bool boolValue() const;

    // The value if it has that type, else std::nullopt.
    [[nodiscard]] std::optional<QString> string() const { return get<QString>(); }
    [[nodiscard]] std::optional<QByteArray> data() const { return get<QByteArray>(); }
    [[nodiscard]] std::optional<QDateTime> date() const { return get<QDateTime>(); }
    [[nodiscard]] std::optional<Image> image() const { return get<Image>(); }
    [[nodiscard]] std::optional<Array> array() const { return get<Array>(); }
    [[nodiscard]] std::optional<Dictionary> dictionary() const { return get<Dictionary>(); }
    [[nodiscard]] std::optional<Object> object() const { return get<Object>(); }

    /// The value with its type, for code that stores it.
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
