#include "platform/qt/files/QtBookmarkStore.h"

#include "base/PathBytes.h"
#include "platform/qt/files/BookmarkBlock.h"

#include <QDir>

#include <utility>

namespace quillow {
namespace {

/// The maximum number of cached search results. There are rarely two different bookmarks.
constexpr qsizetype kRememberedSearches = 64;

void fail(std::optional<PlatformError>* error, const char* description) {
    if (error) *error = PlatformError{QString::fromLatin1(description)};
}

bool isFileUrl(const QUrl& url) {
    return url.isLocalFile() && url.path().startsWith(QLatin1Char('/'));
}

bool standsAt(const QByteArray& path, const FileIdentity& item) {
    const auto identity = FileIdentity::ofItem(path);
    return identity && identity->isSameItemAs(item);
}

/// Whether there is an item at the recorded path. If the path contained links that led to an item, they must still
/// lead to one.
bool hasItem(const BookmarkBlock& block) {
    return block.target ? realPath(block.path).has_value() : FileIdentity::ofItem(block.path).has_value();
}

QString folderOf(const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash > 0 ? path.left(slash) : QStringLiteral("/");
}

} // namespace

QtBookmarkStore::QtBookmarkStore(AccessRegistry& access, const SearchBudget& budget, SteadyNow now)
    : access_(access)
    , budget_(budget)
    , now_(std::move(now)) {}

std::optional<QByteArray> QtBookmarkStore::bookmarkData(const QUrl& url, std::uint32_t options,
                                                        const std::vector<UrlResourceKey>&,
                                                        const std::optional<QUrl>& relativeToURL,
                                                        std::optional<PlatformError>* error) {
    if (!isFileUrl(url) || (relativeToURL && !isFileUrl(*relativeToURL))) {
        fail(error, "not a file URL");
        return std::nullopt;
    }
    const QString path = pathFromFileUrl(url);
    const QByteArray bytes = pathToBytes(path);
    const auto identity = FileIdentity::ofItem(bytes);
    if (!identity) {
        fail(error, "there is no item at this URL");
        return std::nullopt;
    }
    // The block always contains all three resource values (path, name, is-directory), whichever were requested.
    BookmarkBlock block;
    block.mode =
        options & kBookmarkCreationSecurityScopeAllowOnlyReadAccess ? AccessMode::readOnly : AccessMode::readWrite;
    block.path = bytes;
    block.identity = *identity;
    if (const auto parent = FileIdentity::ofItem(pathToBytes(folderOf(path)))) block.parentInode = parent->inode;
    const auto real = realPath(bytes);
    if (real && *real != bytes) {
        if (const auto target = FileIdentity::ofItem(*real)) block.target = BookmarkBlock::Target{*real, *target};
    }
    if (relativeToURL)
        block.relativePath = pathToBytes(QDir(folderOf(pathFromFileUrl(*relativeToURL))).relativeFilePath(path));
    return block.toBytes();
}

std::optional<QUrl> QtBookmarkStore::resolveBookmarkData(const QByteArray& bookmark, std::uint32_t,
                                                         const std::optional<QUrl>& relativeToURL,
                                                         bool* bookmarkDataIsStale,
                                                         std::optional<PlatformError>* error) {
    const auto block = BookmarkBlock::fromBytes(bookmark);
    if (!block) {
        fail(error, "these bytes are no bookmark");
        return std::nullopt;
    }
    if (block->relativePath.has_value() != relativeToURL.has_value()) {
        fail(error, "a document-scoped bookmark is resolved with its document, any other without one");
        return std::nullopt;
    }
    if (hasItem(*block)) return resolvedUrl(block->path, block->mode);

    std::optional<QByteArray> found;
    if (relativeToURL && isFileUrl(*relativeToURL)) {
        const QDir documentFolder(folderOf(pathFromFileUrl(*relativeToURL)));
        const QByteArray beside =
            pathToBytes(QDir::cleanPath(documentFolder.absoluteFilePath(pathFromBytes(*block->relativePath))));
        if (FileIdentity::ofItem(beside)) found = beside;
    }
    if (!found) found = findElsewhere(bookmark, *block);
    if (!found) {
        fail(error, "the item was not found");
        return std::nullopt;
    }
    if (bookmarkDataIsStale) *bookmarkDataIsStale = true;
    return resolvedUrl(*found, block->mode);
}

std::optional<QUrl> QtBookmarkStore::resolvedUrl(const QByteArray& path, AccessMode mode) {
    modes_.insert(pathFromBytes(path), mode);
    return fileUrlFromPath(pathFromBytes(path));
}

std::optional<QByteArray> QtBookmarkStore::findElsewhere(const QByteArray& bookmark, const BookmarkBlock& block) {
    const auto remembered = searches_.constFind(bookmark);
    if (remembered != searches_.constEnd() && now_() - remembered->when < kSearchMemory) {
        const auto& found = remembered->found;
        if (!found) return std::nullopt;
        if (standsAt(found->path, found->identity)) return found->path;
    }
    if (searches_.size() >= kRememberedSearches) searches_.clear();
    ++searchCount_;
    const auto found = search(block);
    searches_.insert(bookmark, {now_(), found});
    return found ? std::optional(found->path) : std::nullopt;
}

std::optional<QtBookmarkStore::FoundItem> QtBookmarkStore::search(const BookmarkBlock& block) const {
    if (const auto& target = block.target) {
        // First the link itself, if it was moved and still leads to an item; then the item that it led to.
        if (!block.identity.isSameItemAs(target->identity)) {
            const auto link = findMovedItem(block.identity, block.path, budget_, now_);
            if (link && realPath(*link)) return FoundItem{*link, block.identity};
        }
        if (standsAt(target->path, target->identity)) return FoundItem{target->path, target->identity};
        const auto found = findMovedItem(target->identity, target->path, budget_, now_);
        return found ? std::optional(FoundItem{*found, target->identity}) : std::nullopt;
    }
    const auto found = findMovedItem(block.identity, block.path, budget_, now_);
    return found ? std::optional(FoundItem{*found, block.identity}) : std::nullopt;
}

bool QtBookmarkStore::startAccessingSecurityScopedResource(const QUrl& url) {
    if (!isFileUrl(url)) return false;
    const QString path = pathFromFileUrl(url);
    if (!FileIdentity::ofItem(pathToBytes(path))) return false;
    access_.start(path, modes_.value(path, AccessMode::readWrite));
    return true;
}

void QtBookmarkStore::stopAccessingSecurityScopedResource(const QUrl& url) {
    access_.stop(pathFromFileUrl(url));
}

} // namespace quillow
