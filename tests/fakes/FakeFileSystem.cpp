#include "tests/fakes/FakeFileSystem.h"

#include <QStringList>

#include <algorithm>

namespace quillow {
namespace {

/// The most symbolic links that Linux follows in one path.
constexpr int kMaximumLinks = 40;

QString withoutTrailingSlashes(QString path) {
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

QString folderOf(const QString& path) {
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

} // namespace

std::optional<QByteArray> FakeFileSystem::contentsOfFile(const QString& path) const {
    const Item* item = itemAt(path);
    if (!item || item->kind != Kind::file || !item->isReadable || item->isTooLarge) return std::nullopt;
    return item->bytes;
}

bool FakeFileSystem::isTooLarge(const QString& path) const {
    const Item* item = itemAt(path);
    return item && item->isReadable && item->isTooLarge;
}

bool FakeFileSystem::fileExistsAtPath(const QString& path, bool* isDirectory) const {
    const Item* item = itemAt(path);
    if (!item) return false;
    if (isDirectory) *isDirectory = item->kind == Kind::folder;
    return true;
}

bool FakeFileSystem::writeToFileAtomically(const QByteArray& bytes, const QString& path, const WriteFailed& failed) {
    const bool isWritten = write(bytes, path);
    if (!isWritten && failed) failed(isDiskFull_ ? QStringLiteral("full") : QStringLiteral("refused"));
    return isWritten;
}

bool FakeFileSystem::write(const QByteArray& bytes, const QString& path) {
    journal_.add(QStringLiteral("write ") + path);
    const std::optional<QString> folder = resolved(folderOf(path));
    if (!folder || items_.value(*folder).kind != Kind::folder || isDiskFull_) return false;
    const bool isReadOnly = std::any_of(readOnly_.begin(), readOnly_.end(), [&](const QString& top) {
        return *folder == top || folder->startsWith(top + u'/');
    });
    const QString target = (*folder == u"/" ? QString() : *folder) + path.mid(path.lastIndexOf(u'/'));
    if (isReadOnly || (items_.contains(target) && items_.value(target).kind == Kind::folder)) return false;
    insert(target, {Kind::file, bytes, {}, true, 0});
    return true;
}

bool FakeFileSystem::createDirectory(const QString& path) {
    journal_.add(QStringLiteral("create folder ") + path);
    if (isDiskFull_) return false;
    bool isDirectory = false;
    if (fileExistsAtPath(path, &isDirectory)) return isDirectory;
    addFolder(path);
    return true;
}

std::optional<QStringList> FakeFileSystem::contentsOfDirectory(const QString& path) const {
    const std::optional<QString> folder = resolved(path);
    if (!folder || items_.value(*folder).kind != Kind::folder) return std::nullopt;
    QStringList names;
    for (auto entry = items_.cbegin(); entry != items_.cend(); ++entry)
        if (entry.key() != *folder && folderOf(entry.key()) == *folder)
            names.append(entry.key().mid(entry.key().lastIndexOf(u'/') + 1));
    return names;
}

bool FakeFileSystem::copyItem(const QString& path, const QString& toPath) {
    journal_.add(QStringLiteral("copy ") + path + QStringLiteral(" to ") + toPath);
    const std::optional<QByteArray> bytes = contentsOfFile(path);
    if (!bytes || isDiskFull_ || itemAt(toPath)) return false;
    addFile(toPath, *bytes);
    return true;
}

bool FakeFileSystem::removeItem(const QString& path) {
    journal_.add(QStringLiteral("remove ") + path);
    if (!items_.contains(path)) return false;
    remove(path);
    return true;
}

void FakeFileSystem::addFile(const QString& path, const QByteArray& bytes) {
    addFolder(folderOf(path));
    insert(path, {Kind::file, bytes, {}, true, 0});
}

void FakeFileSystem::addFolder(const QString& path) {
    if (path != u"/") addFolder(folderOf(path));
    if (!items_.contains(path)) insert(path, {Kind::folder, {}, {}, true, 0});
}

void FakeFileSystem::addSymbolicLink(const QString& path, const QString& target) {
    addFolder(folderOf(path));
    insert(path, {Kind::symbolicLink, {}, target, true, 0});
}

void FakeFileSystem::makeUnreadable(const QString& path) {
    items_[path].isReadable = false;
}

void FakeFileSystem::makeTooLarge(const QString& path) {
    items_[path].isTooLarge = true;
}

void FakeFileSystem::remove(const QString& path) {
    items_.removeIf([&](const auto& entry) { return entry.key() == path || entry.key().startsWith(path + u'/'); });
}

void FakeFileSystem::move(const QString& from, const QString& to) {
    addFolder(folderOf(to));
    QMap<QString, Item> moved;
    for (auto entry = items_.cbegin(); entry != items_.cend(); ++entry) {
        if (entry.key() == from || entry.key().startsWith(from + u'/'))
            moved.insert(to + entry.key().mid(from.size()), entry.value());
    }
    remove(from);
    items_.insert(moved);
}

bool FakeFileSystem::isEmptyFolder(const QString& path) const {
    const std::optional<QString> folder = resolved(path);
    if (!folder || items_.value(*folder).kind != Kind::folder) return false;
    const auto next = items_.upperBound(*folder + u'/');
    return next == items_.cend() || !next.key().startsWith(*folder + u'/');
}

std::uint64_t FakeFileSystem::itemNumber(const QString& path) const {
    const Item* item = itemAt(path);
    return item ? item->number : 0;
}

std::optional<QString> FakeFileSystem::pathOfItem(std::uint64_t number) const {
    for (auto entry = items_.cbegin(); entry != items_.cend(); ++entry) {
        if (entry.value().number == number) return entry.key();
    }
    return std::nullopt;
}

void FakeFileSystem::insert(const QString& path, Item item) {
    item.number = ++lastNumber_;
    items_.insert(path, item);
}

std::optional<QString> FakeFileSystem::resolved(const QString& path) const {
    if (!path.startsWith(u'/')) return std::nullopt;
    QStringList pending = withoutTrailingSlashes(path).split(u'/', Qt::SkipEmptyParts);
    QString done;
    int links = 0;
    while (!pending.isEmpty()) {
        const QString next = done + u'/' + pending.takeFirst();
        if (!items_.contains(next)) return std::nullopt;
        const Item item = items_.value(next);
        if (item.kind == Kind::symbolicLink) {
            if (++links > kMaximumLinks) return std::nullopt;
            const bool isAbsolute = item.target.startsWith(u'/');
            pending = item.target.split(u'/', Qt::SkipEmptyParts) + pending;
            if (isAbsolute) done.clear();
        } else {
            done = next;
        }
    }
    return done.isEmpty() ? QStringLiteral("/") : done;
}

const FakeFileSystem::Item* FakeFileSystem::itemAt(const QString& path) const {
    static const Item root{Kind::folder, {}, {}, true, 0};
    const std::optional<QString> real = resolved(path);
    if (!real) return nullptr;
    const auto found = items_.constFind(*real);
    return found == items_.cend() ? (*real == u"/" ? &root : nullptr) : &*found;
}

} // namespace quillow
