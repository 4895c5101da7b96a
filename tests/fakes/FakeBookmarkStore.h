// Bookmarks in the fake file system: they store the path and the item's number, and find a moved item again. A test
// can switch on the failures that a real platform may have.
#pragma once

#include "platform/BookmarkStore.h"
#include "tests/fakes/FakeFileSystem.h"
#include "tests/fakes/Journal.h"

#include <QHash>
#include <QSet>
#include <QString>

namespace quillow {

class FakeBookmarkStore final : public BookmarkStore {
public:
    /// The arguments of a call that creates a bookmark.
    struct Creation {
        QUrl url;
        std::uint32_t options = 0;
        std::vector<UrlResourceKey> keys;
        std::optional<QUrl> relativeToURL;
    };
    /// The arguments of a call that resolves a bookmark.
    struct Resolution {
        QByteArray bookmark;
        std::uint32_t options = 0;
        std::optional<QUrl> relativeToURL;
        bool wasStaleBefore = false;
    };
    /// How creation and resolution fail. errorBesideResult also returns a result.
    enum class Failure { none, errorBesideResult, nothingWithoutError };

    FakeBookmarkStore(FakeFileSystem& fileSystem, Journal& journal)
        : fileSystem_(fileSystem)
        , journal_(journal) {}

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

    void fail(Failure failure) { failure_ = failure; }
    void refuseAccess() { refusesAccess_ = true; }

    [[nodiscard]] const std::vector<Creation>& created() const { return created_; }
    [[nodiscard]] const std::vector<Resolution>& resolved() const { return resolved_; }
    /// Accesses that were started and not yet stopped.
    [[nodiscard]] int openAccesses() const { return openAccesses_; }

private:
    FakeFileSystem& fileSystem_;
    Journal& journal_;
    Failure failure_ = Failure::none;
    bool refusesAccess_ = false;
    std::vector<Creation> created_;
    std::vector<Resolution> resolved_;
    QSet<QString> resolvedReadOnly_; ///< paths whose latest resolved bookmark was read-only
    int openAccesses_ = 0;
};

} // namespace quillow
