#include "util/exporter/ValueText.h"

#include "util/NSDataBase64.h"

#include <charconv>
#include <type_traits>
#include <variant>

namespace quillow {
namespace {

template <class Number>
QString shortestDecimal(Number number) {
    char digits[64];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
    return QString::fromLatin1(digits, end - digits);
}

QString isoDate(const QDateTime& date) {
    return date.toOffsetFromUtc(date.offsetFromUtc()).toString(Qt::ISODate);
}

/// Writes one value and the values inside it.
class Writer {
public:
    void write(const Boxed& value) {
        std::visit([this](const auto& held) { write(held); }, value.value());
    }
    [[nodiscard]] const QString& text() const { return text_; }

private:
    void write(std::monostate) {}
    void write(bool value) { text_ += value ? u'1' : u'0'; }
    void write(std::int64_t value) { text_ += QString::number(value); }
    void write(float value) { text_ += shortestDecimal(value); }
    void write(double value) { text_ += shortestDecimal(value); }
    void write(const QString& value) { text_ += value; }
    void write(const QByteArray& value) { text_ += NSDataBase64::base64enc(value).value_or(QString()); }
    void write(const QDateTime& value) { text_ += isoDate(value); }
    void write(const Image& value) { text_ += QString::number(value.width) + u'x' + QString::number(value.height); }
    void write(const Boxed::Object&) {} // has no text
    void write(const Boxed::Array& value) {
        bool isFirst = true;
        for (auto element = value.begin(); element != value.end() && isBegun(isFirst); ++element)
            writeInside(*element);
    }
    void write(const Boxed::Dictionary& value) {
        bool isFirst = true;
        for (auto entry = value.begin(); entry != value.end() && isBegun(isFirst); ++entry) {
            text_ += entry.key() + QStringLiteral(": ");
            writeInside(entry.value());
        }
    }

    /// Separates and counts the next value; returns false once the limit is reached.
    bool isBegun(bool& isFirst) {
        if (count_ > kMaximumValuesInCell) return false;
        if (!std::exchange(isFirst, false)) text_ += QStringLiteral(", ");
        if (++count_ <= kMaximumValuesInCell) return true;
        text_ += kRest;
        return false;
    }
    void writeInside(const Boxed& value) {
        if (depth_ == kMaximumDepthInCell) {
            text_ += kRest;
            return;
        }
        ++depth_;
        write(value);
        --depth_;
    }

    static constexpr QChar kRest = u'\u2026';
    QString text_;
    int count_ = 0;
    int depth_ = 0;
};

} // namespace

QString textOfValue(const Boxed& value) {
    if (const auto* string = std::get_if<QString>(&value.value())) return *string;
    Writer writer;
    writer.write(value);
    return writer.text();
}

} // namespace quillow
