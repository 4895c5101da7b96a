// Bookmarks as blocks that record an item's path and its identity on the file system. An item at the recorded path is
// taken as the item. Only if there is none does a search look elsewhere. If the path contains symbolic links, the
// item that they led to is recorded too.
#pragma once

#include "platform/BookmarkStore.h"
#include "platform/qt/files/AccessRegistry.h"
#include "platform/qt/files/BookmarkBlock.h"
#include "platform/qt/files/MovedItemSearch.h"

#include <QHash>

namespace quillow {

class QtBookmarkStore final : public BookmarkStore {
public:
    /// How long a search result stays cached, so that a drop of 500 documents searches once.
    static constexpr std::chrono::seconds kSearchMemory{5};

    explicit QtBookmarkStore(AccessRegistry& access, const SearchBudget& budget = {},
                             SteadyNow now = &std::chrono::steady_clock::now);

    [[nodiscard]] std::optional<QByteArray>
    bookmarkData(const QUrl& url, std::uint32_t options,
                 const std::vector<UrlResourceKey>& includingResourceValuesForKeys,
                 const std::optional<QUrl>& relativeToURL, std::optional<PlatformError>* error) override;
    [[nodiscard]] std::optional<QUrl> resolveBookmarkData(const QByteArray& bookmark, std::uint32_t options,
                                                          const std::optional<QUrl>& relativeToURL,
                                                          bool* bookmarkDataIsStale,
                                                          std::optional<PlatformError>* error) override;
    [[nodiscard]] bool startAccessingSecurityScopedResource(const QUrl& url) override;
    void stopAccessingSecurityScopedResource(const QUrl& url) override;

    /// The number of searches for moved items so far.
    [[nodiscard]] int searchCount() const { return searchCount_; }

private:
    struct FoundItem {
        QByteArray path;
        FileIdentity identity;
    };
    struct RememberedSearch {
        std::chrono::steady_clock::time_point when;
        std::optional<FoundItem> found;
    };

    std::optional<QByteArray> findElsewhere(const QByteArray& bookmark, const BookmarkBlock& block);
    [[nodiscard]] std::optional<FoundItem> search(const BookmarkBlock& block) const;
    std::optional<QUrl> resolvedUrl(const QByteArray& path, AccessMode mode);

    AccessRegistry& access_;
    SearchBudget budget_;
    SteadyNow now_;
    int searchCount_ = 0;
    QHash<QByteArray, RememberedSearch> searches_;
    QHash<QString, AccessMode> modes_; ///< the modes of resolved items, by path
};

} // namespace quillow
