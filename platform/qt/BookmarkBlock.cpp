#include "platform/qt/BookmarkBlock.h"

#include <QCborMap>
#include <QCborValue>

namespace quillow {
namespace {

constexpr char kTag[] = "QuillowBookmark\n";
constexpr int kVersion = 1;
/// No path is longer than PATH_MAX; two of them and the numbers fit many times.
constexpr qsizetype kMaximumSize = 65536;

QCborValue number(std::uint64_t value) {
    return QCborValue(static_cast<qint64>(value));
}

} // namespace

QByteArray BookmarkBlock::toBytes() const {
    QCborMap map;
    map[QLatin1String("version")] = kVersion;
    map[QLatin1String("mode")] = QLatin1String(mode == AccessMode::readOnly ? "ro" : "rw");
    map[QLatin1String("path")] = path;
    map[QLatin1String("name")] = path.mid(path.lastIndexOf('/') + 1);
    map[QLatin1String("isDirectory")] = identity.isDirectory;
    if (relativePath) map[QLatin1String("relativePath")] = *relativePath;
    map[QLatin1String("device")] = number(identity.device);
    map[QLatin1String("fileSystem")] = number(identity.fileSystem);
    map[QLatin1String("inode")] = number(identity.inode);
    if (identity.birthTime) {
        map[QLatin1String("birthSeconds")] = static_cast<qint64>(identity.birthTime->seconds);
        map[QLatin1String("birthNanoseconds")] = static_cast<qint64>(identity.birthTime->nanoseconds);
    }
    if (parentInode) map[QLatin1String("parentInode")] = number(*parentInode);
    return kTag + QCborValue(map).toCbor();
}

std::optional<BookmarkBlock> BookmarkBlock::fromBytes(const QByteArray& bytes) {
    if (bytes.size() > kMaximumSize || !bytes.startsWith(kTag)) return std::nullopt;
    QCborParserError error;
    const QCborMap map = QCborValue::fromCbor(bytes.mid(sizeof kTag - 1), &error).toMap();
    if (error.error != QCborError::NoError || map[QLatin1String("version")].toInteger() != kVersion)
        return std::nullopt;

    const auto unsignedAt = [&](const char* key) {
        return static_cast<std::uint64_t>(map[QLatin1String(key)].toInteger());
    };
    BookmarkBlock block;
    const QString mode = map[QLatin1String("mode")].toString();
    if (mode != QLatin1String("ro") && mode != QLatin1String("rw")) return std::nullopt;
    block.mode = mode == QLatin1String("ro") ? AccessMode::readOnly : AccessMode::readWrite;
    block.path = map[QLatin1String("path")].toByteArray();
    if (!block.path.startsWith('/') || block.path.contains('\0')) return std::nullopt;
    const QCborValue relative = map[QLatin1String("relativePath")];
    if (relative.isByteArray() && !relative.toByteArray().contains('\0')) block.relativePath = relative.toByteArray();
    block.identity.isDirectory = map[QLatin1String("isDirectory")].toBool();
    block.identity.device = unsignedAt("device");
    block.identity.fileSystem = unsignedAt("fileSystem");
    block.identity.inode = unsignedAt("inode");
    if (map[QLatin1String("birthSeconds")].isInteger()) {
        block.identity.birthTime = BirthTime{map[QLatin1String("birthSeconds")].toInteger(),
                                             map[QLatin1String("birthNanoseconds")].toInteger()};
    }
    if (map[QLatin1String("parentInode")].isInteger()) block.parentInode = unsignedAt("parentInode");
    return block;
}

} // namespace quillow
