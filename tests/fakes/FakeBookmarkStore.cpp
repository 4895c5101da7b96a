#include "tests/fakes/FakeBookmarkStore.h"

#include "base/PathBytes.h"
#include "base/PathStrings.h"

#include <QList>

namespace quillow {
namespace {

// A bookmark has four lines: this word, the creation options, the item's number, the path. A document-scoped one has
// a fifth: the path relative to the document's folder, which is empty for an item outside of it.
constexpr char kMagic[] = "bookmark";

QString folderAround(const QUrl& document) {
    const QString path = pathOfURL(document);
    return path.left(path.lastIndexOf(u'/') + 1);
}

} // namespace

std::optional<QByteArray>
FakeBookmarkStore::bookmarkData(const QUrl& url, std::uint32_t options,
                                const std::vector<UrlResourceKey>& includingResourceValuesForKeys,
                                const std::optional<QUrl>& relativeToURL, std::optional<PlatformError>* error) {
    created_.push_back({url, options, includingResourceValuesForKeys, relativeToURL});
    if (failure_ == Failure::nothingWithoutError) return std::nullopt;
    if (failure_ == Failure::errorBesideResult) *error = PlatformError{QStringLiteral("scripted")};
    const QString path = pathOfURL(url);
    const bool isOfFiles = url.isLocalFile() && (!relativeToURL || relativeToURL->isLocalFile());
    if (!isOfFiles || !fileSystem_.fileExistsAtPath(path, nullptr)) {
        *error = PlatformError{QStringLiteral("no such item")};
        return std::nullopt;
    }
    QList<QByteArray> lines{kMagic, QByteArray::number(options),
                            QByteArray::number(static_cast<qulonglong>(fileSystem_.itemNumber(path))),
                            pathToBytes(path)};
    if (relativeToURL) {
        const QString folder = folderAround(*relativeToURL);
        lines.append(path.startsWith(folder) ? pathToBytes(path.mid(folder.size())) : QByteArray());
    }
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
    if (lines.size() < 4 || lines.size() > 5 || lines[0] != kMagic) {
        *error = PlatformError{QStringLiteral("no bookmark")};
        return std::nullopt;
    }
    const bool isOfDocument = lines.size() == 5;
    if (isOfDocument != relativeToURL.has_value()) {
        *error = PlatformError{QStringLiteral("another scope")};
        return std::nullopt;
    }
    QString path = pathFromBytes(lines[3]);
    if (!fileSystem_.fileExistsAtPath(path, nullptr)) {
        const QString beside =
            isOfDocument && !lines[4].isEmpty() ? folderAround(*relativeToURL) + pathFromBytes(lines[4]) : QString();
        const std::optional<QString> found = fileSystem_.fileExistsAtPath(beside, nullptr)
                                                 ? std::optional(beside)
                                                 : fileSystem_.pathOfItem(lines[2].toULongLong());
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
