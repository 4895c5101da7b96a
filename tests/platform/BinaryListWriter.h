// Writes valid and invalid binary property lists. The test adds objects as bytes or as values, and controls the
// offset table and the trailer.
#pragma once

#include "base/Boxed.h"

#include <QByteArray>
#include <QList>

#include <bit>
#include <cstdint>

namespace quillow {

inline QByteArray bigEndian(std::uint64_t number, int length) {
    QByteArray bytes;
    for (int i = length - 1; i >= 0; --i)
        bytes.append(static_cast<char>(i < 8 ? (number >> (8 * i)) & 0xFF : 0));
    return bytes;
}

class BinaryListWriter {
public:
    int offsetSize = 4;
    int referenceSize = 2;
    std::uint64_t root = 0;
    QList<QByteArray> objects;

    /// Adds an object as bytes and returns its number.
    std::uint64_t add(const QByteArray& object) {
        objects.append(object);
        return static_cast<std::uint64_t>(objects.size() - 1);
    }

    /// A marker with its count: in the short form, or with an integer object after it.
    static QByteArray marker(int type, std::uint64_t count) {
        if (count < 15) return QByteArray(1, static_cast<char>(type << 4 | static_cast<int>(count)));
        return QByteArray(1, static_cast<char>(type << 4 | 0x0F)) + '\x12' + bigEndian(count, 4);
    }
    static QByteArray ascii(const QByteArray& text) {
        return marker(0x5, static_cast<std::uint64_t>(text.size())) + text;
    }
    static QByteArray real(double number) { return '\x23' + bigEndian(std::bit_cast<std::uint64_t>(number), 8); }
    [[nodiscard]] QByteArray array(const QList<std::uint64_t>& references) const {
        QByteArray bytes = marker(0xA, static_cast<std::uint64_t>(references.size()));
        for (const std::uint64_t reference : references)
            bytes += bigEndian(reference, referenceSize);
        return bytes;
    }

    /// Adds a value with all its parts: strings, integers, arrays and dictionaries.
    std::uint64_t addValue(const Boxed& value) { // NOLINT(misc-no-recursion): of the test's own values
        const std::uint64_t place = add({});
        QByteArray bytes;
        if (const auto text = value.string()) {
            bytes = marker(0x6, static_cast<std::uint64_t>(text->size()));
            for (const QChar unit : *text)
                bytes += bigEndian(unit.unicode(), 2);
        } else if (const auto items = value.array()) {
            QList<std::uint64_t> references;
            for (const Boxed& item : *items)
                references.append(addValue(item));
            bytes = array(references);
        } else if (const auto entries = value.dictionary()) {
            if (entries->size() == 1 && entries->firstKey() == u"CF$UID") {
                bytes = '\x81' + bigEndian(static_cast<std::uint64_t>(entries->first().longValue()), 2);
            } else {
                bytes = marker(0xD, static_cast<std::uint64_t>(entries->size()));
                for (const QString& key : entries->keys())
                    bytes += bigEndian(addValue(key), referenceSize);
                for (const Boxed& item : entries->values())
                    bytes += bigEndian(addValue(item), referenceSize);
            }
        } else {
            bytes = '\x13' + bigEndian(static_cast<std::uint64_t>(value.longValue()), 8);
        }
        objects[static_cast<qsizetype>(place)] = bytes;
        return place;
    }

    [[nodiscard]] QByteArray list() const {
        QByteArray bytes("bplist00");
        QByteArray table;
        for (const QByteArray& object : objects) {
            table += bigEndian(static_cast<std::uint64_t>(bytes.size()), offsetSize);
            bytes += object;
        }
        const auto tableOffset = static_cast<std::uint64_t>(bytes.size());
        return bytes + table + trailer(static_cast<std::uint64_t>(objects.size()), tableOffset);
    }

    [[nodiscard]] QByteArray trailer(std::uint64_t count, std::uint64_t tableOffset) const {
        return QByteArray(6, '\0') + static_cast<char>(offsetSize) + static_cast<char>(referenceSize) +
               bigEndian(count, 8) + bigEndian(root, 8) + bigEndian(tableOffset, 8);
    }
};

/// A list with one object.
inline QByteArray listOf(const QByteArray& object) {
    BinaryListWriter writer;
    writer.add(object);
    return writer.list();
}

} // namespace quillow
