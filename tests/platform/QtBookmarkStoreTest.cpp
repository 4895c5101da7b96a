// How the disk's bookmark store finds moved items, where it does not search, and the limits of a search.
#include "base/PathBytes.h"
#include "platform/qt/files/BookmarkBlock.h"
#include "tests/platform/FileWorlds.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace std::chrono_literals;

class QtBookmarkStoreTest : public testing::Test {
protected:
    QString at(const char16_t* name) const { return world_.root() + u'/' + QString::fromUtf16(name); }

    QByteArray make(const char16_t* name) {
        return store_
            .bookmarkData(fileUrlFromPath(at(name)), kBookmarkCreationWithSecurityScope, {}, std::nullopt, nullptr)
            .value_or(QByteArray());
    }
    std::optional<QString> resolve(const QByteArray& bookmark) {
        isStale_ = false;
        const auto url = store_.resolveBookmarkData(bookmark, kBookmarkResolutionWithSecurityScope, std::nullopt,
                                                    &isStale_, nullptr);
        return url ? std::optional(pathFromFileUrl(*url)) : std::nullopt;
    }

    DiskFileWorld world_;
    std::chrono::steady_clock::time_point now_{};
    QtBookmarkStore store_{world_.access, {}, [this] { return now_; }};
    bool isStale_ = false;
};

TEST_F(QtBookmarkStoreTest, findsAnItemWhoseFolderWasRenamed) {
    world_.addFolder(at(u"p/q/item"));
    const QByteArray bookmark = make(u"p/q/item");
    world_.move(at(u"p"), at(u"pp"));
    EXPECT_EQ(resolve(bookmark), at(u"pp/q/item"));
    EXPECT_TRUE(isStale_);
}

TEST_F(QtBookmarkStoreTest, doesNotFindWhatIsInATrash) {
    for (const char16_t* trash : {u".Trash-1000/files/item", u".Trash/1000/files/item"}) {
        world_.addFolder(at(u"p/item"));
        const QByteArray bookmark = make(u"p/item");
        world_.move(at(u"p/item"), at(trash));
        EXPECT_FALSE(resolve(bookmark).has_value());
    }
    world_.addFolder(at(u"p/item"));
    world_.addFolder(at(u"share/Trash/info"));
    const QByteArray bookmark = make(u"p/item");
    world_.move(at(u"p/item"), at(u"share/Trash/files/item"));
    EXPECT_FALSE(resolve(bookmark).has_value());
}

TEST_F(QtBookmarkStoreTest, aFolderThatIsMerelyNamedTrashIsSearched) {
    world_.addFolder(at(u"p/item"));
    const QByteArray bookmark = make(u"p/item");
    world_.move(at(u"p/item"), at(u"Trash/item"));
    EXPECT_EQ(resolve(bookmark), at(u"Trash/item"));
}

TEST_F(QtBookmarkStoreTest, theSameInodeWithAnotherBirthIsAnotherItem) {
    world_.addFolder(at(u"p/item"));
    BookmarkBlock block = BookmarkBlock::fromBytes(make(u"p/item")).value();
    ASSERT_TRUE(block.identity.birthTime.has_value()) << "this file system keeps no birth times";
    world_.move(at(u"p/item"), at(u"p/moved"));
    block.identity.birthTime->nanoseconds ^= 1;
    EXPECT_FALSE(resolve(block.toBytes()).has_value());
}

TEST_F(QtBookmarkStoreTest, birthTimesAreNotComparedWhereThereAreNone) {
    world_.addFolder(at(u"p/item"));
    BookmarkBlock block = BookmarkBlock::fromBytes(make(u"p/item")).value();
    world_.move(at(u"p/item"), at(u"p/moved"));
    block.identity.birthTime.reset();
    EXPECT_EQ(resolve(block.toBytes()), at(u"p/moved"));
}

TEST_F(QtBookmarkStoreTest, doesNotLookOnAnotherFileSystem) {
    world_.addFolder(at(u"p/item"));
    BookmarkBlock block = BookmarkBlock::fromBytes(make(u"p/item")).value();
    world_.move(at(u"p/item"), at(u"p/moved"));
    block.identity.device += 1;
    block.identity.fileSystem += 1;
    EXPECT_FALSE(resolve(block.toBytes()).has_value());
}

TEST_F(QtBookmarkStoreTest, aFailedSearchIsRememberedForAWhile) {
    world_.addFolder(at(u"p/item"));
    const QByteArray bookmark = make(u"p/item");
    world_.remove(at(u"p/item"));
    for (int i = 0; i < 500; ++i)
        EXPECT_FALSE(resolve(bookmark).has_value());
    EXPECT_EQ(store_.searchCount(), 1);
    now_ += QtBookmarkStore::kSearchMemory;
    EXPECT_FALSE(resolve(bookmark).has_value());
    EXPECT_EQ(store_.searchCount(), 2);
}

TEST_F(QtBookmarkStoreTest, aFoundItemIsNotSearchedAgainWhileItStandsThere) {
    world_.addFolder(at(u"p/item"));
    const QByteArray bookmark = make(u"p/item");
    world_.move(at(u"p/item"), at(u"p/moved"));
    EXPECT_EQ(resolve(bookmark), at(u"p/moved"));
    EXPECT_EQ(resolve(bookmark), at(u"p/moved"));
    EXPECT_EQ(store_.searchCount(), 1);
    world_.move(at(u"p/moved"), at(u"p/again"));
    EXPECT_EQ(resolve(bookmark), at(u"p/again"));
    EXPECT_EQ(store_.searchCount(), 2);
}

TEST_F(QtBookmarkStoreTest, whatComesBackToItsPathIsFreshAtOnce) {
    world_.addFolder(at(u"p/item"));
    const QByteArray bookmark = make(u"p/item");
    world_.move(at(u"p/item"), at(u".Trash-1000/files/item"));
    EXPECT_FALSE(resolve(bookmark).has_value());
    world_.move(at(u".Trash-1000/files/item"), at(u"p/item"));
    EXPECT_EQ(resolve(bookmark), at(u"p/item"));
    EXPECT_FALSE(isStale_);
}

// Symbolic links.

TEST_F(QtBookmarkStoreTest, findsARenamedFolderBelowALink) {
    world_.addFolder(at(u"disk/data/item"));
    world_.addFolder(at(u"user"));
    world_.addSymbolicLink(at(u"user/link"), at(u"disk/data"));
    const QByteArray bookmark = make(u"user/link/item");
    EXPECT_EQ(resolve(bookmark), at(u"user/link/item"));
    EXPECT_FALSE(isStale_);
    world_.move(at(u"disk/data/item"), at(u"disk/data/renamed"));
    EXPECT_EQ(resolve(bookmark), at(u"disk/data/renamed"));
    EXPECT_TRUE(isStale_);
}

TEST_F(QtBookmarkStoreTest, findsTheFolderBelowALinkThatWasRenamed) {
    world_.addFolder(at(u"disk/data/item"));
    world_.addFolder(at(u"user"));
    world_.addSymbolicLink(at(u"user/link"), at(u"disk/data"));
    const QByteArray bookmark = make(u"user/link/item");
    world_.move(at(u"user/link"), at(u"user/other"));
    // The item is found without a search, however far it is from the link's old place.
    QtBookmarkStore searchesNothing(world_.access, {0, 0ms}, [this] { return now_; });
    bool isStale = false;
    const auto url = searchesNothing.resolveBookmarkData(bookmark, kBookmarkResolutionWithSecurityScope, std::nullopt,
                                                         &isStale, nullptr);
    EXPECT_EQ(pathFromFileUrl(url.value_or(QUrl())), at(u"disk/data/item"));
    EXPECT_TRUE(isStale);
}

TEST_F(QtBookmarkStoreTest, findsALinkThatWasRenamed) {
    world_.addFolder(at(u"disk/item"));
    world_.addFolder(at(u"user"));
    world_.addSymbolicLink(at(u"user/link"), at(u"disk/item"));
    const QByteArray bookmark = make(u"user/link");
    world_.move(at(u"user/link"), at(u"user/other"));
    EXPECT_EQ(resolve(bookmark), at(u"user/other"));
    EXPECT_TRUE(isStale_);
}

TEST_F(QtBookmarkStoreTest, findsTheRenamedFolderThatALinkLedTo) {
    world_.addFolder(at(u"disk/item"));
    world_.addFolder(at(u"user"));
    world_.addSymbolicLink(at(u"user/link"), at(u"disk/item"));
    const QByteArray bookmark = make(u"user/link");
    world_.move(at(u"disk/item"), at(u"disk/renamed"));
    EXPECT_EQ(resolve(bookmark), at(u"disk/renamed"));
    EXPECT_TRUE(isStale_);
    world_.move(at(u"user/link"), at(u"user/other"));
    now_ += QtBookmarkStore::kSearchMemory;
    EXPECT_EQ(resolve(bookmark), at(u"disk/renamed")) << "the moved link leads nowhere";
}

TEST_F(QtBookmarkStoreTest, anotherFolderBehindTheLinkIsFresh) {
    world_.addFolder(at(u"one/item"));
    world_.addFolder(at(u"two/item"));
    world_.addSymbolicLink(at(u"link"), at(u"one"));
    const QByteArray bookmark = make(u"link/item");
    world_.remove(at(u"link"));
    world_.addSymbolicLink(at(u"link"), at(u"two"));
    EXPECT_EQ(resolve(bookmark), at(u"link/item"));
    EXPECT_FALSE(isStale_);
}

TEST_F(QtBookmarkStoreTest, aLinkThatLeadsNowhereIsAnItemItself) {
    world_.addSymbolicLink(at(u"link"), at(u"missing"));
    const QByteArray bookmark = make(u"link");
    EXPECT_EQ(resolve(bookmark), at(u"link"));
    EXPECT_FALSE(isStale_);
}

TEST_F(QtBookmarkStoreTest, searchesBehindALinkThatTookTheFoldersPlace) {
    world_.addFolder(at(u"user/texts/item"));
    const QByteArray bookmark = make(u"user/texts/item");
    world_.move(at(u"user/texts"), at(u"disk/texts"));
    world_.addSymbolicLink(at(u"user/texts"), at(u"disk/texts"));
    world_.move(at(u"disk/texts/item"), at(u"disk/texts/renamed"));
    EXPECT_EQ(resolve(bookmark), at(u"disk/texts/renamed"));
}

TEST_F(QtBookmarkStoreTest, aSearchEndsWithItsEntries) {
    world_.addFolder(at(u"p/item"));
    const auto identity = FileIdentity::ofItem(pathToBytes(at(u"p/item"))).value();
    world_.move(at(u"p/item"), at(u"p/z/item"));
    for (int i = 0; i < 50; ++i)
        world_.addFile(at(u"p/") + QString::number(i), "x");
    const QByteArray former = pathToBytes(at(u"p/item"));
    const SteadyNow now = [] { return std::chrono::steady_clock::time_point{}; };
    EXPECT_FALSE(findMovedItem(identity, former, {10, 250ms}, now).has_value());
    EXPECT_EQ(findMovedItem(identity, former, {1000, 250ms}, now), pathToBytes(at(u"p/z/item")));
}

TEST_F(QtBookmarkStoreTest, aSearchEndsWithItsTime) {
    world_.addFolder(at(u"p/item"));
    const auto identity = FileIdentity::ofItem(pathToBytes(at(u"p/item"))).value();
    world_.remove(at(u"p/item"));
    for (int i = 0; i < 600; ++i)
        world_.addFile(at(u"p/") + QString::number(i), "x");
    int readings = 0;
    // Each call of this clock returns a time one second later.
    const SteadyNow now = [&readings] {
        return std::chrono::steady_clock::time_point{} + std::chrono::seconds(readings++);
    };
    EXPECT_FALSE(findMovedItem(identity, pathToBytes(at(u"p/item")), {50000, 250ms}, now).has_value());
    EXPECT_EQ(readings, 2);
}

TEST_F(QtBookmarkStoreTest, aDocumentScopedBookmarkFindsTheItemBesideItsMovedDocument) {
    world_.addFile(at(u"Job/letter.doc"), "d");
    world_.addFile(at(u"Job/parts/picture"), "p");
    const auto bookmark =
        store_.bookmarkData(fileUrlFromPath(at(u"Job/parts/picture")), kBookmarkCreationWithSecurityScope, {},
                            fileUrlFromPath(at(u"Job/letter.doc")), nullptr);
    ASSERT_TRUE(bookmark.has_value());
    world_.move(at(u"Job"), at(u"Copied"));
    bool isStale = false;
    const auto url = store_.resolveBookmarkData(*bookmark, kBookmarkResolutionWithSecurityScope,
                                                fileUrlFromPath(at(u"Copied/letter.doc")), &isStale, nullptr);
    ASSERT_TRUE(url.has_value());
    EXPECT_EQ(pathFromFileUrl(*url), at(u"Copied/parts/picture"));
    EXPECT_TRUE(isStale);
    EXPECT_EQ(store_.searchCount(), 0);
}

TEST_F(QtBookmarkStoreTest, aDocumentScopedBookmarkNeedsItsDocument) {
    world_.addFile(at(u"letter.doc"), "d");
    const auto bookmark = store_.bookmarkData(fileUrlFromPath(at(u"letter.doc")), kBookmarkCreationWithSecurityScope,
                                              {}, fileUrlFromPath(at(u"letter.doc")), nullptr);
    EXPECT_FALSE(resolve(bookmark.value()).has_value());
}

TEST_F(QtBookmarkStoreTest, damagedBlocksAreErrors) {
    world_.addFolder(at(u"item"));
    const QByteArray bookmark = make(u"item");
    for (qsizetype length = 0; length < bookmark.size(); ++length)
        EXPECT_FALSE(resolve(bookmark.left(length)).has_value());
    BookmarkBlock relative = BookmarkBlock::fromBytes(bookmark).value();
    relative.path = "item";
    EXPECT_FALSE(resolve(relative.toBytes()).has_value());
}

TEST_F(QtBookmarkStoreTest, aBlockKeepsWhatItRecords) {
    world_.addFolder(at(u"item"));
    const BookmarkBlock block = BookmarkBlock::fromBytes(make(u"item")).value();
    const auto identity = FileIdentity::ofItem(pathToBytes(at(u"item"))).value();
    EXPECT_EQ(block.path, pathToBytes(at(u"item")));
    EXPECT_TRUE(block.identity.isSameItemAs(identity));
    EXPECT_EQ(block.identity.birthTime, identity.birthTime);
    EXPECT_TRUE(block.identity.isDirectory);
    EXPECT_EQ(block.parentInode, FileIdentity::ofItem(pathToBytes(world_.root())).value().inode);
    EXPECT_FALSE(block.target.has_value());

    world_.addSymbolicLink(at(u"link"), at(u"item"));
    const BookmarkBlock linked = BookmarkBlock::fromBytes(make(u"link")).value();
    EXPECT_FALSE(linked.identity.isDirectory);
    ASSERT_TRUE(linked.target.has_value());
    EXPECT_EQ(linked.target->path, pathToBytes(at(u"item")));
    EXPECT_TRUE(linked.target->identity.isSameItemAs(identity));
}

} // namespace
} // namespace quillow
