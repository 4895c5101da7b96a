#include "platform/qt/plist/UnkeyedArchive.h"

#include <QStringDecoder>

#include <cstdint>
#include <vector>

namespace quillow {
namespace {

constexpr std::uint8_t kStreamVersion = 4;
constexpr char kBigEndianSignature[] = "typedstream";
constexpr char kLittleEndianSignature[] = "streamtyped";

// A first byte that is not a tag is a one-byte integer, from -110 to 127. References to earlier items are integers:
// -110 refers to the first item.
constexpr std::uint8_t kTwoBytes = 0x81;
constexpr std::uint8_t kFourBytes = 0x82;
constexpr std::uint8_t kNew = 0x84;
constexpr std::uint8_t kNil = 0x85;
constexpr std::uint8_t kEndOfObject = 0x86;
constexpr std::uint8_t kFirstByteWithoutTag = 0x92;
constexpr std::uint8_t kFirstTag = 0x80;

/// Copies only the resulting text. Each step consumes bytes of the archive, so the reader terminates.
class Reader {
public:
    explicit Reader(const QByteArray& archive)
        : left_(archive) {}

    std::optional<QString> read() {
        if (!readHeader() || readName() != "@") return std::nullopt;
        ClassKind kind = beginObject();
        if (kind == ClassKind::styledText) kind = readName() == "@" ? beginObject() : ClassKind::other;
        return kind == ClassKind::string ? readCharacters() : std::nullopt;
    }

private:
    /// Which of the two known classes a class is, or is derived from.
    enum class ClassKind { other, string, styledText };

    bool readHeader() {
        if (takeByte() != kStreamVersion) return false;
        const auto signature = takeCounted();
        if (!signature) return false;
        isBigEndian_ = *signature == kBigEndianSignature;
        if (!isBigEndian_ && *signature != kLittleEndianSignature) return false;
        return takeCount().has_value(); // the system's version
    }

    std::optional<QByteArrayView> take(std::uint64_t count) {
        if (count > static_cast<std::uint64_t>(left_.size())) return std::nullopt;
        const QByteArrayView taken = left_.first(static_cast<qsizetype>(count));
        left_ = left_.sliced(taken.size());
        return taken;
    }

    std::optional<std::uint8_t> takeByte() {
        const auto byte = take(1);
        return byte ? std::optional(static_cast<std::uint8_t>(byte->front())) : std::nullopt;
    }

    /// The two or four bytes after a tag. Counts and numbers are never negative.
    std::optional<std::uint64_t> takeUnsigned(std::uint64_t size) {
        const auto bytes = take(size);
        if (!bytes) return std::nullopt;
        std::uint64_t number = 0;
        for (qsizetype i = 0; i < bytes->size(); ++i) {
            const auto byte = static_cast<std::uint8_t>((*bytes)[isBigEndian_ ? i : bytes->size() - 1 - i]);
            number = (number << 8) | byte;
        }
        return number;
    }

    std::optional<std::uint64_t> takeCount() {
        const auto first = takeByte();
        if (!first) return std::nullopt;
        if (*first == kTwoBytes) return takeUnsigned(2);
        if (*first == kFourBytes) return takeUnsigned(4);
        return *first < kFirstTag ? std::optional<std::uint64_t>(*first) : std::nullopt;
    }

    std::optional<QByteArrayView> takeCounted() {
        const auto count = takeCount();
        return count ? take(*count) : std::nullopt;
    }

    /// The number of an earlier item. `first` is the first byte of the reference.
    std::optional<std::uint64_t> takeReference(std::uint8_t first) {
        if (first >= kFirstByteWithoutTag) return first - kFirstByteWithoutTag;
        constexpr std::uint64_t kNumbersBelowZero = 0x100 - kFirstByteWithoutTag;
        std::optional<std::uint64_t> number;
        if (first < kFirstTag) number = first;
        if (first == kTwoBytes) number = takeUnsigned(2);
        if (first == kFourBytes) number = takeUnsigned(4);
        return number ? std::optional(*number + kNumbersBelowZero) : std::nullopt;
    }

    /// The name of a type or a class; std::nullopt for nil too.
    std::optional<QByteArrayView> readName() {
        const auto first = takeByte();
        if (!first) return std::nullopt;
        if (*first == kNew) {
            const auto name = takeCounted();
            if (name) names_.push_back(*name);
            return name;
        }
        const auto number = takeReference(*first);
        return number && *number < names_.size() ? std::optional(names_[*number]) : std::nullopt;
    }

    /// Reads up to an object's first group.
    ClassKind beginObject() {
        if (takeByte() != kNew) return ClassKind::other;
        objects_.push_back(ClassKind::other);
        return readClass().value_or(ClassKind::other);
    }

    /// Reads a class and its base classes.
    std::optional<ClassKind> readClass() {
        const std::size_t firstNew = objects_.size();
        ClassKind above = ClassKind::other;
        for (;;) {
            const auto first = takeByte();
            if (!first) return std::nullopt;
            if (*first == kNil) break;
            if (*first != kNew) {
                const auto number = takeReference(*first);
                // A reference to a class of this chain would be a cycle.
                if (!number || *number >= firstNew) return std::nullopt;
                above = objects_[*number];
                break;
            }
            const auto name = readName();
            if (!name || !takeCount()) return std::nullopt; // the class's version
            objects_.push_back(kindOf(*name));
        }
        for (std::size_t i = objects_.size(); i-- > firstNew; above = objects_[i])
            if (objects_[i] == ClassKind::other) objects_[i] = above;
        return above;
    }

    static ClassKind kindOf(QByteArrayView name) {
        if (name == "NSString") return ClassKind::string;
        return name == "NSAttributedString" ? ClassKind::styledText : ClassKind::other;
    }

    /// Reads a string's only group, in UTF-8, and its end tag.
    std::optional<QString> readCharacters() {
        if (readName() != "+") return std::nullopt;
        const auto bytes = takeCounted();
        if (!bytes || takeByte() != kEndOfObject) return std::nullopt;
        QStringDecoder decoder(QStringDecoder::Utf8,
                               QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
        const QString text = decoder(*bytes);
        return decoder.hasError() ? std::nullopt : std::optional(text);
    }

    QByteArrayView left_;
    bool isBigEndian_ = false;
    std::vector<QByteArrayView> names_;
    std::vector<ClassKind> objects_; ///< objects and classes share one numbering
};

} // namespace

std::optional<QString> stringOfUnkeyedArchive(const QByteArray& archive) {
    return Reader(archive).read();
}

} // namespace quillow
