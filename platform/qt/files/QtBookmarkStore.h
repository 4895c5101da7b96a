// Bookmarks as blocks that name an item by its path and by its identity on the file system. What stands at the recorded path is
// the item; only when nothing stands there is it looked for elsewhere. If the path has symbolic links in it, the item that they led to is
// recorded too.
#pragma once

#include "platform/BookmarkStore.h"
#include "platform/qt/files/AccessRegistry.h"
#include "platform/qt/files/BookmarkBlock.h"
#include "platform/qt/files/MovedItemSearch.h"

#include <QHash>

namespace quillow {

class QtBookmarkStore final : public BookmarkStore {
public:
    /// How long the outcome of a search is believed, so that a drop of 500 documents searches once.
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

    /// How many searches for moved items were made.
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
    QHash<QString, AccessMode> modes_; ///< of resolved items, by path
};

} // namespace quillow
