#include "platform/qt/storage/BoxedText.h"

#include "base/Base64.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QTimeZone>

#include <type_traits>

namespace quillow {
namespace {

/// The maximum nesting depth on reading. A deeper value becomes nil.
constexpr int kMaximumDepth = 16;

QString base64(const QByteArray& bytes) {
    return QString::fromLatin1(bytes.toBase64());
}

std::optional<QByteArray> bytesOf(const QString& base64Text) {
    return bytesFromBase64(base64Text.toLatin1(), Base64Space::lineEnds);
}

QCborValue cborFromBoxed(const Boxed& value) {
    if (const auto array = value.array()) {
        QCborArray items;
        for (const Boxed& item : *array)
            items.append(cborFromBoxed(item));
        return items;
    }
    if (const auto dictionary = value.dictionary()) {
        QCborMap entries;
        for (auto entry = dictionary->begin(); entry != dictionary->end(); ++entry)
            entries.insert(QCborValue(entry.key()), cborFromBoxed(entry.value()));
        return entries;
    }
    return value.isNil() || value.object() ? QCborValue(nullptr) : QCborValue(textFromBoxed(value));
}

Boxed imageFromText(const QString& text) {
    const QStringList parts = text.split(u',');
    if (parts.size() != 3) return {};
    bool isWidth = false;
    bool isHeight = false;
    Image image{parts[0].toInt(&isWidth), parts[1].toInt(&isHeight), {}};
    const auto pixels = bytesOf(parts[2]);
    if (!isWidth || !isHeight || image.width < 0 || image.height < 0 || !pixels) return {};
    if (pixels->size() % 4 != 0 || qint64{image.width} * image.height != pixels->size() / 4) return {};
    image.rgba = *pixels;
    return image;
}

/// Returns std::nullopt if an item is damaged or too deep. A CBOR null becomes nil.
std::optional<Boxed> boxedFromCbor(const QCborValue& value, int depth) {
    if (depth > kMaximumDepth) return std::nullopt;
    if (value.isNull()) return Boxed();
    if (value.isArray()) {
        Boxed::Array items;
        for (const QCborValue item : value.toArray()) {
            const auto boxed = boxedFromCbor(item, depth + 1);
            if (!boxed) return std::nullopt;
            items.append(*boxed);
        }
        return items;
    }
    if (value.isMap()) {
        Boxed::Dictionary entries;
        const QCborMap map = value.toMap();
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            const auto boxed = boxedFromCbor(entry.value(), depth + 1);
            if (!boxed || !entry.key().isString()) return std::nullopt;
            entries.insert(entry.key().toString(), *boxed);
        }
        return entries;
    }
    // A string that holds an array or dictionary in text form would bypass the depth limit.
    const QString text = value.toString();
    const Boxed boxed = text.startsWith(u'j') ? Boxed() : boxedFromText(text);
    return boxed.isNil() ? std::nullopt : std::optional(boxed);
}

Boxed boxedFromCborBytes(const QByteArray& bytes) {
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(bytes, &error);
    return error.error == QCborError::NoError ? boxedFromCbor(value, 0).value_or(Boxed()) : Boxed();
}

} // namespace

QString asciiFromString(const QString& string) {
    QString text;
    for (const QChar unit : string) {
        const char16_t code = unit.unicode();
        const bool isPlain = code > 0x20 && code < 0x7F && !QStringView(u"%\"\\;,=[#").contains(unit);
        if (isPlain)
            text += unit;
        else
            text += QStringLiteral("%%1").arg(code, 4, 16, QLatin1Char('0'));
    }
    return text;
}

std::optional<QString> stringFromAscii(QStringView text) {
    QString string;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != QLatin1Char('%')) {
            string += text[i];
            continue;
        }
        bool isNumber = false;
        const ushort code = text.mid(i + 1, 4).toUShort(&isNumber, 16);
        if (!isNumber || text.size() - i < 5) return std::nullopt;
        string += QChar(code);
        i += 4;
    }
    return string;
}

QString textFromBoxed(const Boxed& value) {
    return std::visit(
        [&value](const auto& held) -> QString {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, std::monostate>)
                return {};
            else if constexpr (std::is_same_v<T, bool>)
                return held ? QStringLiteral("b:true") : QStringLiteral("b:false");
            else if constexpr (std::is_same_v<T, std::int64_t>)
                return QStringLiteral("i:") + QString::number(held);
            else if constexpr (std::is_same_v<T, float>)
                return QStringLiteral("f:") + QString::number(static_cast<double>(held), 'g', 9);
            else if constexpr (std::is_same_v<T, double>)
                return QStringLiteral("g:") + QString::number(held, 'g', 17);
            else if constexpr (std::is_same_v<T, QString>)
                return QStringLiteral("s:") + asciiFromString(held);
            else if constexpr (std::is_same_v<T, QByteArray>)
                return QStringLiteral("x:") + base64(held);
            else if constexpr (std::is_same_v<T, QDateTime>)
                return QStringLiteral("t:") + held.toUTC().toString(Qt::ISODateWithMs);
            else if constexpr (std::is_same_v<T, Image>)
                return QStringLiteral("m:%1,%2,").arg(held.width).arg(held.height) + base64(held.rgba);
            else if constexpr (std::is_same_v<T, Boxed::Object>)
                return {};
            else
                return QStringLiteral("j:") + base64(cborFromBoxed(value).toCbor());
        },
        value.value());
}

Boxed boxedFromText(const QString& text) {
    if (text.size() < 2 || text[1] != QLatin1Char(':')) return {};
    const QString rest = text.mid(2);
    bool isNumber = false;
    switch (text[0].unicode()) {
    case u'b':
        return rest == QLatin1String("true") ? Boxed(true) : rest == QLatin1String("false") ? Boxed(false) : Boxed();
    case u'i': {
        const qlonglong number = rest.toLongLong(&isNumber);
        return isNumber ? Boxed(std::int64_t{number}) : Boxed();
    }
    case u'f': {
        const float number = rest.toFloat(&isNumber);
        return isNumber ? Boxed(number) : Boxed();
    }
    case u'g': {
        const double number = rest.toDouble(&isNumber);
        return isNumber ? Boxed(number) : Boxed();
    }
    case u's': return stringFromAscii(rest);
    case u'x': return bytesOf(rest);
    case u't': {
        const QDateTime instant = QDateTime::fromString(rest, Qt::ISODateWithMs);
        return instant.isValid() ? Boxed(instant) : Boxed();
    }
    case u'm': return imageFromText(rest);
    case u'j': {
        const auto cbor = bytesOf(rest);
        return cbor ? boxedFromCborBytes(*cbor) : Boxed();
    }
    default: return {};
    }
}

} // namespace quillow
