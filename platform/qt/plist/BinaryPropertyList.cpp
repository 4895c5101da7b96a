#include "platform/qt/plist/BinaryPropertyList.h"

#include "platform/qt/plist/PropertyList.h"

#include <QtEndian>

#include <bit>
#include <cstdint>

namespace quillow {

namespace {

constexpr std::size_t kTrailerSize = 32;
constexpr std::size_t kHeaderSize = 8;
/// Limit for the total size of a list's strings and data after all references are followed, as a multiple of the
/// list's size.
constexpr std::size_t kCopiesFactor = 4;

class Reader {
public:
    explicit Reader(const QByteArray& bytes)
        : bytes_(reinterpret_cast<const std::uint8_t*>(bytes.constData()))
        , size_(static_cast<std::size_t>(bytes.size())) {}

    std::optional<Boxed> read() {
        if (size_ < kHeaderSize + kTrailerSize) return std::nullopt;
        const std::size_t trailer = size_ - kTrailerSize;
        offsetSize_ = bytes_[trailer + 6];
        referenceSize_ = bytes_[trailer + 7];
        const auto count = readUnsigned(trailer + 8, 8);
        const auto root = readUnsigned(trailer + 16, 8);
        const auto table = readUnsigned(trailer + 24, 8);
        if (!isIntegerSize(offsetSize_) || !isIntegerSize(referenceSize_)) return std::nullopt;
        if (*count == 0 || *root >= *count || *table < kHeaderSize || *table > trailer) return std::nullopt;
        if (*count > (trailer - *table) / offsetSize_) return std::nullopt;
        objectCount_ = *count;
        table_ = *table;
        return readObject(*root, 0);
    }

private:
    static bool isIntegerSize(std::size_t size) { return size >= 1 && size <= 8; }

    /// A big-endian number of `length` bytes (at most 8), or std::nullopt if it does not lie inside the list.
    [[nodiscard]] std::optional<std::uint64_t> readUnsigned(std::size_t at, std::size_t length) const {
        if (at > size_ || length > size_ - at) return std::nullopt;
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < length; ++i)
            number = (number << 8) | bytes_[at + i];
        return number;
    }

    std::optional<Boxed> readObject(std::uint64_t reference, int depth) {
        if (reference >= objectCount_) return std::nullopt;
        if (++objects_ > kPropertyListObjects) return std::nullopt;
        const auto at = readUnsigned(table_ + static_cast<std::size_t>(reference) * offsetSize_, offsetSize_);
        if (!at || *at < kHeaderSize || *at >= table_) return std::nullopt;
        const std::uint8_t marker = bytes_[*at];
        const std::uint8_t info = marker & 0x0F;
        const std::size_t body = static_cast<std::size_t>(*at) + 1;
        switch (marker >> 4) {
        case 0x0: return readConstant(marker);
        case 0x1: return readInteger(body, std::size_t{1} << info);
        case 0x2: return readReal(body, std::size_t{1} << info);
        case 0x3: return info == 3 ? readDate(body) : std::nullopt;
        case 0x8: return readUniqueIdentifier(body, info + std::size_t{1});
        default: return readCounted(marker >> 4, info, body, depth);
        }
    }

    static std::optional<Boxed> readConstant(std::uint8_t marker) {
        if (marker == 0x08) return Boxed(false);
        if (marker == 0x09) return Boxed(true);
        return std::nullopt;
    }

    /// One, two and four bytes are unsigned, eight are signed. Of sixteen, the lower eight hold the number.
    [[nodiscard]] std::optional<Boxed> readInteger(std::size_t at, std::size_t length) const {
        if (length > 16) return std::nullopt;
        const auto number = length == 16 ? readUnsigned(at + 8, 8) : readUnsigned(at, length);
        if (!number) return std::nullopt;
        return Boxed(static_cast<std::int64_t>(*number));
    }

    [[nodiscard]] std::optional<Boxed> readReal(std::size_t at, std::size_t length) const {
        if (length != 4 && length != 8) return std::nullopt;
        const auto bits = readUnsigned(at, length);
        if (!bits) return std::nullopt;
        return length == 4 ? Boxed(std::bit_cast<float>(static_cast<std::uint32_t>(*bits)))
                           : Boxed(std::bit_cast<double>(*bits));
    }

    [[nodiscard]] std::optional<Boxed> readDate(std::size_t at) const {
        const auto real = readReal(at, 8);
        if (!real) return std::nullopt;
        const auto date = dateFromReferenceDate(real->doubleValue());
        return date ? std::optional(Boxed(*date)) : std::nullopt;
    }

    [[nodiscard]] std::optional<Boxed> readUniqueIdentifier(std::size_t at, std::size_t length) const {
        const auto number = length <= 8 ? readUnsigned(at, length) : std::nullopt;
        if (!number) return std::nullopt;
        return uniqueIdentifier(static_cast<std::int64_t>(*number));
    }

    /// Objects with a count: 15 in the marker means that an integer object with the count follows.
    std::optional<Boxed> readCounted(int type, std::uint8_t info, std::size_t at, int depth) {
        std::uint64_t count = info;
        if (info == 0x0F) {
            const auto sizeMarker = readUnsigned(at, 1);
            if (!sizeMarker || (*sizeMarker >> 4) != 1 || (*sizeMarker & 0x0F) > 3) return std::nullopt;
            const std::size_t length = std::size_t{1} << (*sizeMarker & 0x0F);
            const auto number = readUnsigned(at + 1, length);
            if (!number) return std::nullopt;
            count = *number;
            at += 1 + length;
        }
        if (at > size_ || count > size_ - at) return std::nullopt;
        const auto length = static_cast<std::size_t>(count);
        if (type <= 0x6 && !takeBytes(length)) return std::nullopt;
        if (type > 0x6 && depth >= kPropertyListDepth) return std::nullopt;
        switch (type) {
        case 0x4: return Boxed(QByteArray(reinterpret_cast<const char*>(bytes_ + at), static_cast<qsizetype>(length)));
        case 0x5:
            return Boxed(
                QString::fromLatin1(reinterpret_cast<const char*>(bytes_ + at), static_cast<qsizetype>(length)));
        case 0x6: return readUtf16(at, length);
        case 0xA: return readArray(at, length, depth);
        case 0xD: return readDictionary(at, length, depth);
        default: return std::nullopt;
        }
    }

    /// One string or data object may be referenced many times. The total size of all copies is limited.
    [[nodiscard]] bool takeBytes(std::size_t length) {
        copiedBytes_ += length;
        return copiedBytes_ <= kCopiesFactor * size_;
    }

    [[nodiscard]] std::optional<Boxed> readUtf16(std::size_t at, std::size_t units) const {
        if (units > (size_ - at) / 2) return std::nullopt;
        QString text(static_cast<qsizetype>(units), Qt::Uninitialized);
        for (std::size_t i = 0; i < units; ++i)
            text[static_cast<qsizetype>(i)] = QChar(qFromBigEndian<std::uint16_t>(bytes_ + at + 2 * i));
        return Boxed(text);
    }

    std::optional<Boxed> readReferenced(std::size_t at, std::size_t index, int depth) {
        const auto reference = readUnsigned(at + index * referenceSize_, referenceSize_);
        return reference ? readObject(*reference, depth + 1) : std::nullopt;
    }

    std::optional<Boxed> readArray(std::size_t at, std::size_t count, int depth) {
        if (count > (size_ - at) / referenceSize_) return std::nullopt;
        Boxed::Array array;
        for (std::size_t i = 0; i < count; ++i) {
            const auto element = readReferenced(at, i, depth);
            if (!element) return std::nullopt;
            array.append(*element);
        }
        return Boxed(array);
    }

    std::optional<Boxed> readDictionary(std::size_t at, std::size_t count, int depth) {
        if (count > (size_ - at) / referenceSize_ / 2) return std::nullopt;
        Boxed::Dictionary dictionary;
        for (std::size_t i = 0; i < count; ++i) {
            const auto key = readReferenced(at, i, depth);
            const auto value = readReferenced(at, count + i, depth);
            if (!key || !value || !key->string()) return std::nullopt;
            dictionary.insert(*key->string(), *value);
        }
        return Boxed(dictionary);
    }

    const std::uint8_t* bytes_;
    std::size_t size_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::size_t table_ = 0;
    int objects_ = 0;
    std::size_t copiedBytes_ = 0;
};

} // namespace

std::optional<Boxed> readBinaryPropertyList(const QByteArray& bytes) {
    return Reader(bytes).read();
}

} // namespace quillow
