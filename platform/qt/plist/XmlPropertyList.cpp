#include "platform/qt/plist/XmlPropertyList.h"

#include "base/Base64.h"
#include "platform/qt/plist/PropertyList.h"

#include <QXmlStreamReader>

namespace quillow {

namespace {

class Reader {
public:
    explicit Reader(const QByteArray& bytes)
        : xml_(bytes) {}

    std::optional<Boxed> read() {
        if (!nextElement() || xml_.name() != u"plist" || !nextElement()) return std::nullopt;
        std::optional<Boxed> root = readObject(0);
        // Only the end of the list may follow the root object.
        while (root && !xml_.atEnd()) {
            const auto token = xml_.readNext();
            if (token == QXmlStreamReader::StartElement || token == QXmlStreamReader::Invalid) return std::nullopt;
        }
        return xml_.hasError() ? std::nullopt : root;
    }

private:
    /// Moves to the next start tag. Returns false at the end of the enclosing element or on an error. Rejects lists
    /// with declarations: they are not needed, and entities can expand exponentially.
    bool nextElement() {
        while (!xml_.atEnd()) {
            switch (xml_.readNext()) {
            case QXmlStreamReader::StartElement: return ++objects_ <= kPropertyListObjects;
            case QXmlStreamReader::EndElement: return false;
            case QXmlStreamReader::DTD:
                if (xml_.text().contains(u'[')) return false;
                break;
            default: break;
            }
        }
        return false;
    }

    std::optional<Boxed> readObject(int depth) {
        const QString name = xml_.name().toString();
        if (name == u"dict") return depth < kPropertyListDepth ? readDictionary(depth) : std::nullopt;
        if (name == u"array") return depth < kPropertyListDepth ? readArray(depth) : std::nullopt;
        const auto text = readText();
        return text ? readScalar(name, *text) : std::nullopt;
    }

    /// The element's characters up to its end tag. Skips comments. Rejects any other content, and references to
    /// entities that are declared elsewhere, which the XML reader would skip.
    std::optional<QString> readText() {
        QString text;
        while (!xml_.atEnd()) {
            switch (xml_.readNext()) {
            case QXmlStreamReader::Characters: text += xml_.text(); break;
            case QXmlStreamReader::Comment: break;
            case QXmlStreamReader::EndElement: return text;
            default: return std::nullopt;
            }
        }
        return std::nullopt;
    }

    static std::optional<Boxed> readScalar(const QString& name, const QString& text) {
        bool ok = true;
        if (name == u"string") return Boxed(text);
        if (name == u"true") return Boxed(true);
        if (name == u"false") return Boxed(false);
        if (name == u"integer") {
            const QString digits = text.trimmed();
            const bool isHexadecimal = digits.startsWith(u"0x", Qt::CaseInsensitive);
            const int base = isHexadecimal ? 16 : 10;
            const qlonglong number = digits.toLongLong(&ok, base);
            if (ok) return Boxed(std::int64_t{number});
            // Numbers above the signed range keep their bits, as in the binary form.
            const qulonglong unsignedNumber = digits.toULongLong(&ok, base);
            if (ok) return Boxed(static_cast<std::int64_t>(unsignedNumber));
        } else if (name == u"real") {
            const double number = text.trimmed().toDouble(&ok);
            if (ok) return Boxed(number);
        } else if (name == u"date") {
            const QDateTime date = QDateTime::fromString(text.trimmed(), Qt::ISODate);
            const auto instant = date.isValid() ? dateFromReferenceDate(secondsFromReferenceDate(date)) : std::nullopt;
            if (instant) return Boxed(*instant);
        } else if (name == u"data") {
            // Writers break the lines and indent them.
            if (const auto bytes = bytesFromBase64(text.toLatin1(), Base64Space::all)) return Boxed(*bytes);
        }
        return std::nullopt;
    }

    std::optional<Boxed> readArray(int depth) {
        Boxed::Array array;
        while (nextElement()) {
            const auto element = readObject(depth + 1);
            if (!element) return std::nullopt;
            array.append(*element);
        }
        return endsHere(u"array") ? std::optional<Boxed>(array) : std::nullopt;
    }

    std::optional<Boxed> readDictionary(int depth) {
        Boxed::Dictionary dictionary;
        while (nextElement()) {
            if (xml_.name() != u"key") return std::nullopt;
            const auto key = readText();
            if (!key || !nextElement()) return std::nullopt;
            const auto value = readObject(depth + 1);
            if (!value) return std::nullopt;
            dictionary.insert(*key, *value);
        }
        return endsHere(u"dict") ? std::optional<Boxed>(dictionary) : std::nullopt;
    }

    [[nodiscard]] bool endsHere(QStringView name) const { return xml_.isEndElement() && xml_.name() == name; }

    QXmlStreamReader xml_;
    int objects_ = 0;
};

} // namespace

std::optional<Boxed> readXmlPropertyList(const QByteArray& bytes) {
    return Reader(bytes).read();
}

} // namespace quillow
