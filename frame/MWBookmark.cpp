#include "frame/MWBookmark.h"

#include "platform/BookmarkStore.h"

namespace quillow {
namespace {

constexpr std::uint32_t kReadWrite = kBookmarkCreationWithSecurityScope;
constexpr std::uint32_t kReadOnly =
    kBookmarkCreationWithSecurityScope | kBookmarkCreationSecurityScopeAllowOnlyReadAccess;

} // namespace

std::optional<QByteArray> MWBookmark::bookmarkForURL_RO(const std::optional<QUrl>& url) const {
    return makeBookmark(url, kReadOnly, std::nullopt);
}

std::optional<QByteArray> MWBookmark::bookmarkForURL_RW(const std::optional<QUrl>& url) const {
    return makeBookmark(url, kReadWrite, std::nullopt);
}

std::optional<QByteArray> MWBookmark::docBookmarkForURL_RO(const std::optional<QUrl>& url,
                                                           const std::optional<QUrl>& docUrl) const {
    return makeBookmark(url, kReadOnly, docUrl);
}

std::optional<QByteArray> MWBookmark::docBookmarkForURL_RW(const std::optional<QUrl>& url,
                                                           const std::optional<QUrl>& docUrl) const {
    return makeBookmark(url, kReadWrite, docUrl);
}

std::optional<QUrl> MWBookmark::urlForBookmark(const std::optional<QByteArray>& bookmark, bool* isStale) const {
    return urlForDocBookmark(bookmark, std::nullopt, isStale);
}

std::optional<QUrl> MWBookmark::urlForDocBookmark(const std::optional<QByteArray>& bookmark,
                                                  const std::optional<QUrl>& docUrl, bool* isStale) const {
    // Cleared first, so that it is false if the platform does not set it.
    *isStale = false;
    if (!bookmark) return std::nullopt;
    std::optional<PlatformError> error;
    std::optional<QUrl> url =
        store_.resolveBookmarkData(*bookmark, kBookmarkResolutionWithSecurityScope, docUrl, isStale, &error);
    if (error) return std::nullopt;
    return url;
}

std::optional<QByteArray> MWBookmark::makeBookmark(const std::optional<QUrl>& url, std::uint32_t options,
                                                   const std::optional<QUrl>& relativeToURL) const {
    if (!url) return std::nullopt;
    std::optional<PlatformError> error;
    std::optional<QByteArray> bookmark =
        store_.bookmarkData(*url, options, {UrlResourceKey::path, UrlResourceKey::name, UrlResourceKey::isDirectory},
                            relativeToURL, &error);
    if (error) return std::nullopt;
    return bookmark;
}

} // namespace quillow
