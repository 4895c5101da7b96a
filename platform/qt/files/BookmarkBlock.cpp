#include "platform/qt/files/BookmarkBlock.h"

#include <QCborMap>
#include <QCborValue>

namespace quillow {
namespace {

constexpr char kTag[] = "QuillowBookmark\n";
constexpr int kVersion = 1;
/// No path is longer than PATH_MAX, so the paths and numbers fit easily.
constexpr qsizetype kMaximumSize = 65536;

QCborValue number(std::uint64_t value) {
    return QCborValue(static_cast<qint64>(value));
}

std::uint64_t numberIn(const QCborMap& map, const char* key) {
    return static_cast<std::uint64_t>(map[QLatin1String(key)].toInteger());
}

void insertIdentity(const FileIdentity& identity, QCborMap& map) {
    map[QLatin1String("isDirectory")] = identity.isDirectory;
    map[QLatin1String("device")] = number(identity.device);
    map[QLatin1String("fileSystem")] = number(identity.fileSystem);
    map[QLatin1String("inode")] = number(identity.inode);
    if (!identity.birthTime) return;
    map[QLatin1String("birthSeconds")] = static_cast<qint64>(identity.birthTime->seconds);
    map[QLatin1String("birthNanoseconds")] = static_cast<qint64>(identity.birthTime->nanoseconds);
}

FileIdentity identityIn(const QCborMap& map) {
    FileIdentity identity;
    identity.isDirectory = map[QLatin1String("isDirectory")].toBool();
    identity.device = numberIn(map, "device");
    identity.fileSystem = numberIn(map, "fileSystem");
    identity.inode = numberIn(map, "inode");
    if (map[QLatin1String("birthSeconds")].isInteger()) {
        identity.birthTime = BirthTime{map[QLatin1String("birthSeconds")].toInteger(),
                                       map[QLatin1String("birthNanoseconds")].toInteger()};
    }
    return identity;
}

bool isAbsolutePath(const QByteArray& path) {
    return path.startsWith('/') && !path.contains('\0');
}

} // namespace

QByteArray BookmarkBlock::toBytes() const {
    QCborMap map;
    map[QLatin1String("version")] = kVersion;
    map[QLatin1String("mode")] = QLatin1String(mode == AccessMode::readOnly ? "ro" : "rw");
    map[QLatin1String("path")] = path;
    // deliberate: recorded with the path and the kind, so that the block describes its item. Nothing reads it back.
    map[QLatin1String("name")] = path.mid(path.lastIndexOf('/') + 1);
    insertIdentity(identity, map);
    if (relativePath) map[QLatin1String("relativePath")] = *relativePath;
    if (parentInode) map[QLatin1String("parentInode")] = number(*parentInode);
    if (target) {
        QCborMap targetMap;
        targetMap[QLatin1String("path")] = target->path;
        insertIdentity(target->identity, targetMap);
        map[QLatin1String("target")] = targetMap;
    }
    return kTag + QCborValue(map).toCbor();
}

std::optional<BookmarkBlock> BookmarkBlock::fromBytes(const QByteArray& bytes) {
    if (bytes.size() > kMaximumSize || !bytes.startsWith(kTag)) return std::nullopt;
    QCborParserError error;
    const QCborMap map = QCborValue::fromCbor(bytes.mid(sizeof kTag - 1), &error).toMap();
    if (error.error != QCborError::NoError || map[QLatin1String("version")].toInteger() != kVersion)
        return std::nullopt;

    BookmarkBlock block;
    const QString mode = map[QLatin1String("mode")].toString();
    if (mode != QLatin1String("ro") && mode != QLatin1String("rw")) return std::nullopt;
    block.mode = mode == QLatin1String("ro") ? AccessMode::readOnly : AccessMode::readWrite;
    block.path = map[QLatin1String("path")].toByteArray();
    if (!isAbsolutePath(block.path)) return std::nullopt;
    const QCborValue relative = map[QLatin1String("relativePath")];
    if (relative.isByteArray() && !relative.toByteArray().contains('\0')) block.relativePath = relative.toByteArray();
    block.identity = identityIn(map);
    if (map[QLatin1String("parentInode")].isInteger()) block.parentInode = numberIn(map, "parentInode");
    const QCborMap targetMap = map[QLatin1String("target")].toMap();
    const QByteArray targetPath = targetMap[QLatin1String("path")].toByteArray();
    if (isAbsolutePath(targetPath)) block.target = Target{targetPath, identityIn(targetMap)};
    return block;
}

} // namespace quillow
