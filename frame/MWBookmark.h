// Makes and resolves bookmarks: byte blocks by which a file or folder that the user chose is remembered across launches. Access
// to what a bookmark names is the caller's business: it starts and stops it on the URL that it gets back.
#pragma once

#include <QByteArray>
#include <QUrl>

#include <cstdint>
#include <optional>

namespace quillow {

class BookmarkStore;

class MWBookmark {
public:
    explicit MWBookmark(BookmarkStore& store)
        : store_(store) {} // selector: none

    // A bookmark of the item at a file URL, read-only or read-write. Nothing for a nil URL, one that names no file, or any
    // error of the platform. The doc forms make it relative to a document.
    [[nodiscard]] std::optional<QByteArray> bookmarkForURL_RO(const std::optional<QUrl>& url) const;
    [[nodiscard]] std::optional<QByteArray> bookmarkForURL_RW(const std::optional<QUrl>& url) const;
    [[nodiscard]] std::optional<QByteArray> docBookmarkForURL_RO(const std::optional<QUrl>& url,
                                                                 const std::optional<QUrl>& docUrl) const;
    [[nodiscard]] std::optional<QByteArray> docBookmarkForURL_RW(const std::optional<QUrl>& url,
                                                                 const std::optional<QUrl>& docUrl) const;

    // The URL that a bookmark names, or nothing after any error of the platform, also when it answered a URL beside the
    // error. `*isStale` (never null) tells whether the item was found elsewhere than the bookmark says, and is false
    // whenever the platform does not say so. A stale bookmark is not refreshed here.
    [[nodiscard]] std::optional<QUrl> urlForBookmark(const std::optional<QByteArray>& bookmark, bool* isStale) const;
    [[nodiscard]] std::optional<QUrl> urlForDocBookmark(const std::optional<QByteArray>& bookmark,
                                                        const std::optional<QUrl>& docUrl, bool* isStale) const;

private:
    [[nodiscard]] std::optional<QByteArray> makeBookmark(const std::optional<QUrl>& url, std::uint32_t options,
                                                         const std::optional<QUrl>& relativeToURL) const;

    BookmarkStore& store_;
};

} // namespace quillow
