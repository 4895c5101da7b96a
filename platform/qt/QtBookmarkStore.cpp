#include "platform/qt/QtBookmarkStore.h"

#include "platform/qt/BookmarkBlock.h"
#include "platform/qt/PathBytes.h"

#include <QDir>

#include <utility>

namespace quillow {
namespace {

/// Searches whose outcome is remembered at one time; there are seldom two different bookmarks.
constexpr qsizetype kRememberedSearches = 64;

void fail(std::optional<PlatformError>* error, const char* description) {
    if (error) *error = PlatformError{QString::fromLatin1(description)};
}

bool isFileUrl(const QUrl& url) {
    return url.isLocalFile() && url.path().startsWith(QLatin1Char('/'));
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
    // The three resource values (path, name, is-directory) are always in the block, whichever were asked for.
    BookmarkBlock block;
    block.mode =
        options & kBookmarkCreationSecurityScopeAllowOnlyReadAccess ? AccessMode::readOnly : AccessMode::readWrite;
    block.path = bytes;
    block.identity = *identity;
    if (const auto parent = FileIdentity::ofItem(pathToBytes(folderOf(path)))) block.parentInode = parent->inode;
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
    if (FileIdentity::ofItem(block->path)) return resolvedUrl(block->path, block->mode);

    std::optional<QByteArray> found;
    if (relativeToURL && isFileUrl(*relativeToURL)) {
        const QDir documentFolder(folderOf(pathFromFileUrl(*relativeToURL)));
        const QByteArray beside =
            pathToBytes(QDir::cleanPath(documentFolder.absoluteFilePath(pathFromBytes(*block->relativePath))));
        if (FileIdentity::ofItem(beside)) found = beside;
    }
    if (!found) found = findElsewhere(bookmark, block->identity, block->path);
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

std::optional<QByteArray> QtBookmarkStore::findElsewhere(const QByteArray& bookmark, const FileIdentity& item,
                                                         const QByteArray& formerPath) {
    const auto remembered = searches_.constFind(bookmark);
    if (remembered != searches_.constEnd() && now_() - remembered->when < kSearchMemory) {
        if (!remembered->found) return std::nullopt;
        const auto identity = FileIdentity::ofItem(*remembered->found);
        if (identity && identity->isSameItemAs(item)) return remembered->found;
    }
    if (searches_.size() >= kRememberedSearches) searches_.clear();
    ++searchCount_;
    auto found = findMovedItem(item, formerPath, budget_, now_);
    searches_.insert(bookmark, {now_(), found});
    return found;
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
