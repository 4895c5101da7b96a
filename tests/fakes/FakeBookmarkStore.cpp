#include "tests/fakes/FakeBookmarkStore.h"

#include "base/PathBytes.h"
#include "base/PathStrings.h"

#include <QList>

namespace quillow {
namespace {

// A bookmark is four lines: this word, the creation options, the item's number, the path.
constexpr char kMagic[] = "bookmark";

} // namespace

std::optional<QByteArray>
FakeBookmarkStore::bookmarkData(const QUrl& url, std::uint32_t options,
                                const std::vector<UrlResourceKey>& includingResourceValuesForKeys,
                                const std::optional<QUrl>& relativeToURL, std::optional<PlatformError>* error) {
    created_.push_back({url, options, includingResourceValuesForKeys, relativeToURL});
    if (failure_ == Failure::nothingWithoutError) return std::nullopt;
    if (failure_ == Failure::errorBesideResult) *error = PlatformError{QStringLiteral("scripted")};
    const QString path = pathOfURL(url);
    if (!url.isLocalFile() || !fileSystem_.fileExistsAtPath(path, nullptr)) {
        *error = PlatformError{QStringLiteral("no such item")};
        return std::nullopt;
    }
    const QList<QByteArray> lines{kMagic, QByteArray::number(options),
                                  QByteArray::number(static_cast<qulonglong>(fileSystem_.itemNumber(path))),
                                  pathToBytes(path)};
    return lines.join('\n');
}

std::optional<QUrl> FakeBookmarkStore::resolveBookmarkData(const QByteArray& bookmark, std::uint32_t options,
                                                           const std::optional<QUrl>& relativeToURL,
                                                           bool* bookmarkDataIsStale,
                                                           std::optional<PlatformError>* error) {
    resolved_.push_back({bookmark, options, relativeToURL, *bookmarkDataIsStale});
    if (failure_ == Failure::nothingWithoutError) return std::nullopt;
    if (failure_ == Failure::errorBesideResult) *error = PlatformError{QStringLiteral("scripted")};
    const QList<QByteArray> lines = bookmark.split('\n');
    if (lines.size() != 4 || lines[0] != kMagic) {
        *error = PlatformError{QStringLiteral("no bookmark")};
        return std::nullopt;
    }
    QString path = pathFromBytes(lines[3]);
    if (!fileSystem_.fileExistsAtPath(path, nullptr)) {
        const std::optional<QString> found = fileSystem_.pathOfItem(lines[2].toULongLong());
        if (!found) {
            *error = PlatformError{QStringLiteral("no such item")};
            return std::nullopt;
        }
        path = *found;
        *bookmarkDataIsStale = true;
    }
    const bool isReadOnly = (lines[1].toUInt() & kBookmarkCreationSecurityScopeAllowOnlyReadAccess) != 0;
    if (isReadOnly)
        resolvedReadOnly_.insert(path);
    else
        resolvedReadOnly_.remove(path);
    return fileUrlFromPath(path);
}

bool FakeBookmarkStore::startAccessingSecurityScopedResource(const QUrl& url) {
    const QString path = pathOfURL(url);
    if (refusesAccess_ || !fileSystem_.fileExistsAtPath(path, nullptr)) return false;
    journal_.add(QStringLiteral("startAccess ") + path);
    ++openAccesses_;
    if (resolvedReadOnly_.contains(path)) fileSystem_.openReadOnly(path);
    return true;
}

void FakeBookmarkStore::stopAccessingSecurityScopedResource(const QUrl& url) {
    const QString path = pathOfURL(url);
    journal_.add(QStringLiteral("stopAccess ") + path);
    --openAccesses_;
    fileSystem_.closeReadOnly(path);
}

} // namespace quillow
