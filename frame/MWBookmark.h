// Creates and resolves bookmarks: byte blocks that store the user's choice of a file or folder across launches. The
// caller starts and stops access to the item with the resolved URL.
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

    // Create a read-only or read-write bookmark of the item at a file URL. They return std::nullopt for a nil URL,
    // for a URL that is not a file URL, and after any error of the platform. The doc forms create it relative to a
    // document.
    [[nodiscard]] std::optional<QByteArray> bookmarkForURL_RO(const std::optional<QUrl>& url) const;
    [[nodiscard]] std::optional<QByteArray> bookmarkForURL_RW(const std::optional<QUrl>& url) const;
    [[nodiscard]] std::optional<QByteArray> docBookmarkForURL_RO(const std::optional<QUrl>& url,
                                                                 const std::optional<QUrl>& docUrl) const;
    [[nodiscard]] std::optional<QByteArray> docBookmarkForURL_RW(const std::optional<QUrl>& url,
                                                                 const std::optional<QUrl>& docUrl) const;

    // Resolve a bookmark to its URL. They return std::nullopt after any error of the platform, even if the platform
    // also returned a URL. `isStale` is not null; `*isStale` becomes true if the platform reports that the item is
    // not where the bookmark says, otherwise false. They do not refresh a stale bookmark.
    [[nodiscard]] std::optional<QUrl> urlForBookmark(const std::optional<QByteArray>& bookmark, bool* isStale) const;
    [[nodiscard]] std::optional<QUrl> urlForDocBookmark(const std::optional<QByteArray>& bookmark,
                                                        const std::optional<QUrl>& docUrl, bool* isStale) const;

private:
    [[nodiscard]] std::optional<QByteArray> makeBookmark(const std::optional<QUrl>& url, std::uint32_t options,
                                                         const std::optional<QUrl>& relativeToURL) const;

    BookmarkStore& store_;
};

} // namespace quillow
