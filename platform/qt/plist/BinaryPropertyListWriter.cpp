#include "platform/qt/plist/BinaryPropertyListWriter.h"

#include "platform/qt/plist/PropertyList.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstdint>
#include <vector>

namespace quillow {
namespace {

constexpr char kHeader[] = "bplist00";

// Kinds of objects, the upper four bits of a marker.
constexpr int kInteger = 0x1;
constexpr int kReal = 0x2;
constexpr int kDate = 0x3;
constexpr int kBytes = 0x4;
constexpr int kAscii = 0x5;
constexpr int kUtf16 = 0x6;
constexpr int kUniqueIdentifier = 0x8;
constexpr int kArray = 0xA;
constexpr int kDictionary = 0xD;
constexpr char kFalse = 0x08;
constexpr char kTrue = 0x09;

/// The number of bytes for an integer: 1, 2, 4 or 8.
int bytesFor(std::uint64_t number) {
    if (number <= 0xFF) return 1;
    if (number <= 0xFFFF) return 2;
    return number <= 0xFFFFFFFF ? 4 : 8;
}

class Writer {
public:
    QByteArray write(const Boxed& root) {
        add(root);
        referenceSize_ = bytesFor(objects_.size());
        bytes_ = kHeader;
        std::vector<std::uint64_t> offsets;
        for (const Object& object : objects_) {
            offsets.push_back(static_cast<std::uint64_t>(bytes_.size()));
            appendObject(object);
        }
        const auto table = static_cast<std::uint64_t>(bytes_.size());
        const int offsetSize = bytesFor(table);
        for (const std::uint64_t offset : offsets)
            appendNumber(offset, offsetSize);
        appendTrailer(offsetSize, table);
        return bytes_;
    }

private:
    struct Object {
        Boxed value;
        std::vector<std::size_t> references; ///< an array's elements; a dictionary's keys, then its values
    };

    std::size_t add(const Boxed& value) { // NOLINT(misc-no-recursion): the caller limits the depth
        const std::size_t place = objects_.size();
        objects_.push_back({value, {}});
        std::vector<std::size_t> references;
        if (const auto elements = value.array()) {
            for (const Boxed& element : *elements)
                references.push_back(add(element));
        } else if (const auto entries = value.dictionary(); entries && !numberOfUniqueIdentifier(value)) {
            for (auto entry = entries->cbegin(); entry != entries->cend(); ++entry)
                references.push_back(add(entry.key()));
            for (auto entry = entries->cbegin(); entry != entries->cend(); ++entry)
                references.push_back(add(entry.value()));
        }
        objects_[place].references = std::move(references);
        return place;
    }

    void appendObject(const Object& object) {
        if (const auto* truth = std::get_if<bool>(&object.value.value())) return appendByte(*truth ? kTrue : kFalse);
        if (const auto* number = std::get_if<std::int64_t>(&object.value.value())) return appendInteger(*number);
        if (const auto* number = std::get_if<float>(&object.value.value())) {
            appendMarker(kReal, 2);
            return appendNumber(std::bit_cast<std::uint32_t>(*number), 4);
        }
        if (const auto* number = std::get_if<double>(&object.value.value())) return appendReal(kReal, *number);
        if (const auto* text = std::get_if<QString>(&object.value.value())) return appendText(*text);
        if (const auto* bytes = std::get_if<QByteArray>(&object.value.value())) {
            appendCount(kBytes, static_cast<std::uint64_t>(bytes->size()));
            bytes_ += *bytes;
            return;
        }
        if (const auto* date = std::get_if<QDateTime>(&object.value.value()))
            return appendReal(kDate, secondsFromReferenceDate(*date));
        if (const auto number = numberOfUniqueIdentifier(object.value)) {
            const int length = bytesFor(static_cast<std::uint64_t>(*number));
            appendMarker(kUniqueIdentifier, length - 1);
            return appendNumber(static_cast<std::uint64_t>(*number), length);
        }
        assert((object.value.array() || object.value.dictionary()) && "no property list");
        const std::size_t count = object.references.size();
        if (object.value.array())
            appendCount(kArray, count);
        else
            appendCount(kDictionary, count / 2);
        for (const std::size_t reference : object.references)
            appendNumber(reference, referenceSize_);
    }

    /// One, two and four bytes are unsigned, eight are signed.
    void appendInteger(std::int64_t number) {
        const int length = bytesFor(static_cast<std::uint64_t>(number));
        appendMarker(kInteger, std::countr_zero(static_cast<unsigned>(length)));
        appendNumber(static_cast<std::uint64_t>(number), length);
    }

    void appendReal(int kind, double number) {
        appendMarker(kind, 3);
        appendNumber(std::bit_cast<std::uint64_t>(number), 8);
    }

    void appendText(const QString& text) {
        const auto isAscii = [](QChar unit) { return unit.unicode() < 0x80; };
        if (std::all_of(text.begin(), text.end(), isAscii)) {
            appendCount(kAscii, static_cast<std::uint64_t>(text.size()));
            bytes_ += text.toLatin1();
            return;
        }
        appendCount(kUtf16, static_cast<std::uint64_t>(text.size()));
        const qsizetype start = bytes_.size();
        bytes_.resize(start + text.size() * 2);
        qToBigEndian<std::uint16_t>(text.utf16(), text.size(), bytes_.data() + start);
    }

    /// A count of 15 or more follows as a separate integer object.
    void appendCount(int kind, std::uint64_t count) {
        if (count < 15) return appendMarker(kind, static_cast<int>(count));
        appendMarker(kind, 15);
        appendInteger(static_cast<std::int64_t>(count));
    }

    void appendMarker(int kind, int info) { appendByte(static_cast<char>(kind << 4 | info)); }
    void appendByte(char byte) { bytes_.append(byte); }
    void appendNumber(std::uint64_t number, int length) {
        for (int shift = 8 * (length - 1); shift >= 0; shift -= 8)
            appendByte(static_cast<char>(number >> shift & 0xFF));
    }

    void appendTrailer(int offsetSize, std::uint64_t table) {
        bytes_.append(6, '\0');
        appendByte(static_cast<char>(offsetSize));
        appendByte(static_cast<char>(referenceSize_));
        appendNumber(objects_.size(), 8);
        appendNumber(0, 8); // the root is the first object
        appendNumber(table, 8);
    }

    std::vector<Object> objects_;
    QByteArray bytes_;
    int referenceSize_ = 1;
};

} // namespace

QByteArray binaryPropertyList(const Boxed& value) {
    return Writer().write(value);
}

} // namespace quillow
