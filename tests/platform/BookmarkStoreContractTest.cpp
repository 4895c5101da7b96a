// The contract of the bookmark store port, for all implementations.
#include "base/PathBytes.h"
#include "base/PathStrings.h"
#include "tests/platform/FileWorlds.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

constexpr std::uint32_t kReadWrite = kBookmarkCreationWithSecurityScope;
constexpr std::uint32_t kReadOnly =
    kBookmarkCreationWithSecurityScope | kBookmarkCreationSecurityScopeAllowOnlyReadAccess;

template <class World>
class BookmarkStoreContract : public testing::Test {
protected:
    struct Resolved {
        std::optional<QUrl> url;
        bool isStale = false;
        bool hasError = false;
    };

    QString at(const char16_t* name) const { return world_.root() + u'/' + QString::fromUtf16(name); }
    BookmarkStore& store() { return world_.bookmarkStore; }
    std::optional<QByteArray> make(const QUrl& url, std::uint32_t options = kReadWrite,
                                   const std::optional<QUrl>& document = std::nullopt) {
        std::optional<PlatformError> error;
        auto bookmark = store().bookmarkData(
            url, options, {UrlResourceKey::path, UrlResourceKey::name, UrlResourceKey::isDirectory}, document, &error);
        return error ? std::nullopt : bookmark;
    }
    Resolved resolve(const QByteArray& bookmark, const std::optional<QUrl>& document = std::nullopt) {
        Resolved resolved;
        std::optional<PlatformError> error;
        resolved.url = store().resolveBookmarkData(bookmark, kBookmarkResolutionWithSecurityScope, document,
                                                   &resolved.isStale, &error);
        resolved.hasError = error.has_value();
        return resolved;
    }

    World world_;
};
using Worlds = testing::Types<FakeFileWorld, DiskFileWorld>;
TYPED_TEST_SUITE(BookmarkStoreContract, Worlds);

TYPED_TEST(BookmarkStoreContract, resolvesToTheItemAtItsPath) {
    this->world_.addFolder(this->at(u"Texts"));
    const auto bookmark = this->make(QUrl::fromLocalFile(this->at(u"Texts")));
    ASSERT_TRUE(bookmark.has_value());
    const auto resolved = this->resolve(*bookmark);
    ASSERT_TRUE(resolved.url.has_value());
    EXPECT_EQ(resolved.url->toLocalFile(), this->at(u"Texts"));
    EXPECT_FALSE(resolved.isStale);
    EXPECT_FALSE(resolved.hasError);
}

TYPED_TEST(BookmarkStoreContract, makesNoneOfMissingItemsAndForeignUrls) {
    EXPECT_FALSE(this->make(QUrl::fromLocalFile(this->at(u"missing"))).has_value());
    EXPECT_FALSE(this->make(QUrl(QStringLiteral("https://example.org/a"))).has_value());
    EXPECT_FALSE(this->make(QUrl()).has_value());
}

TYPED_TEST(BookmarkStoreContract, garbageIsAnErrorAndNotStale) {
    for (const QByteArray& garbage : {QByteArray(), QByteArray("x"), QByteArray(200, '\xFF')}) {
        const auto resolved = this->resolve(garbage);
        EXPECT_FALSE(resolved.url.has_value());
        EXPECT_FALSE(resolved.isStale);
        EXPECT_TRUE(resolved.hasError);
    }
}

TYPED_TEST(BookmarkStoreContract, namesThatAreNotUtf8KeepTheirBytes) {
    const QString folder = this->world_.root() + pathFromBytes("/d\xE9p\xF4t");
    const QString document = folder + pathFromBytes("/caf\xE9.rtf");
    this->world_.addFile(document, "x");
    for (const QString& path : {folder, document}) {
        const auto bookmark = this->make(fileUrlFromPath(path));
        ASSERT_TRUE(bookmark.has_value());
        const auto resolved = this->resolve(*bookmark);
        EXPECT_EQ(pathOfURL(resolved.url.value_or(QUrl())), path);
        EXPECT_FALSE(resolved.isStale);
        ASSERT_TRUE(this->store().startAccessingSecurityScopedResource(resolved.url.value()));
        this->store().stopAccessingSecurityScopedResource(resolved.url.value());
    }
}

TYPED_TEST(BookmarkStoreContract, aRenamedFolderIsFoundAgainAndStale) {
    this->world_.addFile(this->at(u"Texts/a.txt"), "x");
    const auto bookmark = this->make(QUrl::fromLocalFile(this->at(u"Texts")));
    this->world_.move(this->at(u"Texts"), this->at(u"Renamed"));
    const auto resolved = this->resolve(bookmark.value());
    ASSERT_TRUE(resolved.url.has_value());
    EXPECT_EQ(resolved.url->toLocalFile(), this->at(u"Renamed"));
    EXPECT_TRUE(resolved.isStale);
}

TYPED_TEST(BookmarkStoreContract, aMovedFileIsFoundAgainAndStale) {
    this->world_.addFile(this->at(u"one/two/item.rtf"), "x");
    const auto bookmark = this->make(QUrl::fromLocalFile(this->at(u"one/two/item.rtf")));
    this->world_.move(this->at(u"one/two/item.rtf"), this->at(u"other/deep/renamed.rtf"));
    const auto resolved = this->resolve(bookmark.value());
    ASSERT_TRUE(resolved.url.has_value());
    EXPECT_EQ(resolved.url->toLocalFile(), this->at(u"other/deep/renamed.rtf"));
    EXPECT_TRUE(resolved.isStale);
}

TYPED_TEST(BookmarkStoreContract, anotherItemAtThePathIsFresh) {
    this->world_.addFolder(this->at(u"Texts"));
    const auto bookmark = this->make(QUrl::fromLocalFile(this->at(u"Texts")));
    this->world_.remove(this->at(u"Texts"));
    this->world_.addFolder(this->at(u"Texts"));
    const auto resolved = this->resolve(bookmark.value());
    EXPECT_TRUE(resolved.url.has_value());
    EXPECT_FALSE(resolved.isStale);
}

TYPED_TEST(BookmarkStoreContract, aDeletedItemIsAnErrorAndNotStale) {
    this->world_.addFolder(this->at(u"Texts"));
    const auto bookmark = this->make(QUrl::fromLocalFile(this->at(u"Texts")));
    this->world_.remove(this->at(u"Texts"));
    const auto resolved = this->resolve(bookmark.value());
    EXPECT_FALSE(resolved.url.has_value());
    EXPECT_FALSE(resolved.isStale);
    EXPECT_TRUE(resolved.hasError);
}

TYPED_TEST(BookmarkStoreContract, aDocumentScopedBookmarkResolvesWithItsDocument) {
    this->world_.addFile(this->at(u"Job/letter.doc"), "d");
    this->world_.addFile(this->at(u"Job/parts/picture"), "p");
    this->world_.addFile(this->at(u"elsewhere"), "e");
    const QUrl document = QUrl::fromLocalFile(this->at(u"Job/letter.doc"));
    for (const char16_t* item : {u"Job/parts/picture", u"elsewhere"}) {
        const auto bookmark = this->make(QUrl::fromLocalFile(this->at(item)), kReadWrite, document);
        ASSERT_TRUE(bookmark.has_value());
        const auto resolved = this->resolve(*bookmark, document);
        ASSERT_TRUE(resolved.url.has_value());
        EXPECT_EQ(resolved.url->toLocalFile(), this->at(item));
        EXPECT_FALSE(resolved.isStale);
        EXPECT_FALSE(resolved.hasError);
    }
}

TYPED_TEST(BookmarkStoreContract, aDocumentScopedBookmarkFollowsItsMovedDocument) {
    this->world_.addFile(this->at(u"Job/letter.doc"), "d");
    this->world_.addFile(this->at(u"Job/parts/picture"), "p");
    const auto bookmark = this->make(QUrl::fromLocalFile(this->at(u"Job/parts/picture")), kReadWrite,
                                     QUrl::fromLocalFile(this->at(u"Job/letter.doc")));
    this->world_.move(this->at(u"Job"), this->at(u"Done"));
    const auto resolved = this->resolve(bookmark.value(), QUrl::fromLocalFile(this->at(u"Done/letter.doc")));
    ASSERT_TRUE(resolved.url.has_value());
    EXPECT_EQ(resolved.url->toLocalFile(), this->at(u"Done/parts/picture"));
    EXPECT_TRUE(resolved.isStale);
}

TYPED_TEST(BookmarkStoreContract, aBookmarkOfTheOtherScopeIsAnErrorAndNotStale) {
    this->world_.addFile(this->at(u"letter.doc"), "d");
    const QUrl document = QUrl::fromLocalFile(this->at(u"letter.doc"));
    const auto ofDocument = this->make(document, kReadWrite, document);
    const auto ofProgram = this->make(document);
    for (const auto& resolved : {this->resolve(ofDocument.value()), this->resolve(ofProgram.value(), document)}) {
        EXPECT_FALSE(resolved.url.has_value());
        EXPECT_FALSE(resolved.isStale);
        EXPECT_TRUE(resolved.hasError);
    }
}

TYPED_TEST(BookmarkStoreContract, aDocumentThatIsNoFileHasNoBookmarks) {
    this->world_.addFile(this->at(u"letter.doc"), "d");
    EXPECT_FALSE(this->make(QUrl::fromLocalFile(this->at(u"letter.doc")), kReadWrite,
                            QUrl(QStringLiteral("https://example.org/letter.doc")))
                     .has_value());
}

TYPED_TEST(BookmarkStoreContract, accessStartsOnlyWhereAnItemStands) {
    this->world_.addFolder(this->at(u"Texts"));
    EXPECT_TRUE(this->store().startAccessingSecurityScopedResource(QUrl::fromLocalFile(this->at(u"Texts"))));
    EXPECT_FALSE(this->store().startAccessingSecurityScopedResource(QUrl::fromLocalFile(this->at(u"missing"))));
    this->store().stopAccessingSecurityScopedResource(QUrl::fromLocalFile(this->at(u"Texts")));
}

TYPED_TEST(BookmarkStoreContract, readOnlyAccessRefusesWritesWhileItLasts) {
    this->world_.addFolder(this->at(u"Texts/deep"));
    const auto bookmark = this->make(QUrl::fromLocalFile(this->at(u"Texts")), kReadOnly);
    const QUrl url = this->resolve(bookmark.value()).url.value();
    ASSERT_TRUE(this->store().startAccessingSecurityScopedResource(url));
    EXPECT_FALSE(this->world_.fileSystem.writeToFileAtomically("x", this->at(u"Texts/deep/a.txt")));
    EXPECT_TRUE(this->world_.fileSystem.writeToFileAtomically("x", this->at(u"beside.txt")));
    this->store().stopAccessingSecurityScopedResource(url);
    EXPECT_TRUE(this->world_.fileSystem.writeToFileAtomically("x", this->at(u"Texts/deep/a.txt")));
}

TYPED_TEST(BookmarkStoreContract, readWriteAccessLetsWrite) {
    this->world_.addFolder(this->at(u"Texts"));
    const QUrl url = this->resolve(this->make(QUrl::fromLocalFile(this->at(u"Texts"))).value()).url.value();
    ASSERT_TRUE(this->store().startAccessingSecurityScopedResource(url));
    EXPECT_TRUE(this->world_.fileSystem.writeToFileAtomically("x", this->at(u"Texts/a.txt")));
    this->store().stopAccessingSecurityScopedResource(url);
}

} // namespace
} // namespace quillow
