#include "frame/MWBookmark.h"

#include "tests/fakes/FakeBookmarkStore.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

struct MWBookmarkTest : testing::Test {
    Journal journal;
    FakeFileSystem files{journal};
    FakeBookmarkStore store{files, journal};
    MWBookmark bookmark{store};
    const QUrl folder = QUrl::fromLocalFile(u"/texts"_s);
    const QUrl document = QUrl::fromLocalFile(u"/documents/report"_s);

    MWBookmarkTest() { files.addFolder(u"/texts"_s); }

    /// The results of the four functions that create bookmarks, for one URL.
    std::vector<std::optional<QByteArray>> createAll(const std::optional<QUrl>& url) const {
        return {bookmark.bookmarkForURL_RO(url), bookmark.bookmarkForURL_RW(url),
                bookmark.docBookmarkForURL_RO(url, document), bookmark.docBookmarkForURL_RW(url, document)};
    }
};

TEST_F(MWBookmarkTest, creationAsksForModeKeysAndDocument) {
    createAll(folder);
    ASSERT_EQ(store.created().size(), 4U);
    const std::uint32_t options[] = {0x1800, 0x800, 0x1800, 0x800};
    const std::vector<UrlResourceKey> keys{UrlResourceKey::path, UrlResourceKey::name, UrlResourceKey::isDirectory};
    for (std::size_t i = 0; i < 4; ++i) {
        const auto& creation = store.created()[i];
        EXPECT_EQ(creation.url, folder) << i;
        EXPECT_EQ(creation.options, options[i]) << i;
        EXPECT_EQ(creation.keys, keys) << i;
        EXPECT_EQ(creation.relativeToURL, i < 2 ? std::nullopt : std::optional(document)) << i;
    }
}

TEST_F(MWBookmarkTest, nilUrlGivesNilFromEveryCreation) {
    for (const auto& made : createAll(std::nullopt))
        EXPECT_FALSE(made.has_value());
    EXPECT_TRUE(store.created().empty());
}

TEST_F(MWBookmarkTest, urlThatNamesNoFileGivesNilFromEveryCreation) {
    for (const auto& made : createAll(QUrl(u"https://example.org/texts"_s)))
        EXPECT_FALSE(made.has_value());
}

TEST_F(MWBookmarkTest, missingItemGivesNilFromEveryCreation) {
    for (const auto& made : createAll(QUrl::fromLocalFile(u"/missing"_s)))
        EXPECT_FALSE(made.has_value());
}

TEST_F(MWBookmarkTest, bytesBesideAnErrorGiveNilFromEveryCreation) {
    store.fail(FakeBookmarkStore::Failure::errorBesideResult);
    for (const auto& made : createAll(folder))
        EXPECT_FALSE(made.has_value());
}

TEST_F(MWBookmarkTest, creationThatYieldsNeitherBytesNorErrorGivesNil) {
    store.fail(FakeBookmarkStore::Failure::nothingWithoutError);
    for (const auto& made : createAll(folder))
        EXPECT_FALSE(made.has_value());
}

TEST_F(MWBookmarkTest, bookmarkResolvesToItsItem) {
    for (const auto& made : {bookmark.bookmarkForURL_RO(folder), bookmark.bookmarkForURL_RW(folder)}) {
        bool isStale = true;
        EXPECT_EQ(bookmark.urlForBookmark(made, &isStale), folder);
        EXPECT_FALSE(isStale);
    }
}

TEST_F(MWBookmarkTest, documentScopedBookmarkResolvesWithItsDocument) {
    for (const auto& made :
         {bookmark.docBookmarkForURL_RO(folder, document), bookmark.docBookmarkForURL_RW(folder, document)}) {
        bool isStale = true;
        EXPECT_EQ(bookmark.urlForDocBookmark(made, document, &isStale), folder);
        EXPECT_FALSE(isStale);
        EXPECT_FALSE(bookmark.urlForBookmark(made, &isStale)) << "not without it";
        EXPECT_FALSE(isStale);
    }
}

TEST_F(MWBookmarkTest, documentScopedBookmarkOfAMovedItemIsStale) {
    const auto made = bookmark.docBookmarkForURL_RW(folder, document);
    files.move(u"/texts"_s, u"/archive/texts"_s);
    bool isStale = false;
    EXPECT_EQ(bookmark.urlForDocBookmark(made, document, &isStale), QUrl::fromLocalFile(u"/archive/texts"_s));
    EXPECT_TRUE(isStale);
}

TEST_F(MWBookmarkTest, documentScopedBookmarkKeepsItsMode) {
    bool isStale = false;
    const auto readOnly =
        bookmark.urlForDocBookmark(bookmark.docBookmarkForURL_RO(folder, document), document, &isStale);
    ASSERT_TRUE(readOnly && store.startAccessingSecurityScopedResource(*readOnly));
    EXPECT_FALSE(files.writeToFileAtomically("text", u"/texts/a.txt"_s));
    store.stopAccessingSecurityScopedResource(*readOnly);
    const auto readWrite =
        bookmark.urlForDocBookmark(bookmark.docBookmarkForURL_RW(folder, document), document, &isStale);
    ASSERT_TRUE(readWrite && store.startAccessingSecurityScopedResource(*readWrite));
    EXPECT_TRUE(files.writeToFileAtomically("text", u"/texts/a.txt"_s));
}

TEST_F(MWBookmarkTest, resolutionAsksForSecurityScopeAndNothingElse) {
    bool isStale = false;
    EXPECT_FALSE(bookmark.urlForBookmark(QByteArray("x"), &isStale));
    EXPECT_FALSE(bookmark.urlForDocBookmark(QByteArray("y"), document, &isStale));
    ASSERT_EQ(store.resolved().size(), 2U);
    EXPECT_EQ(store.resolved()[0].options, 0x400U);
    EXPECT_EQ(store.resolved()[0].relativeToURL, std::nullopt);
    EXPECT_EQ(store.resolved()[1].options, 0x400U);
    EXPECT_EQ(store.resolved()[1].relativeToURL, document);
}

TEST_F(MWBookmarkTest, staleFlagIsFalseBeforeThePlatformIsAsked) {
    bool isStale = true;
    EXPECT_TRUE(bookmark.urlForBookmark(bookmark.bookmarkForURL_RW(folder), &isStale));
    EXPECT_FALSE(store.resolved().at(0).wasStaleBefore);
}

TEST_F(MWBookmarkTest, garbageGivesNilAndIsNotStale) {
    for (const QByteArray& garbage : {QByteArray(), QByteArray("garbage"), QByteArray("\0\xff\x80", 3)}) {
        bool isStale = true;
        EXPECT_FALSE(bookmark.urlForBookmark(garbage, &isStale));
        EXPECT_FALSE(isStale);
    }
}

TEST_F(MWBookmarkTest, nilBookmarkGivesNilAndIsNotStale) {
    bool isStale = true;
    EXPECT_FALSE(bookmark.urlForBookmark(std::nullopt, &isStale));
    EXPECT_FALSE(isStale);
    isStale = true;
    EXPECT_FALSE(bookmark.urlForDocBookmark(std::nullopt, document, &isStale));
    EXPECT_FALSE(isStale);
}

TEST_F(MWBookmarkTest, movedItemResolvesToItsNewPlaceAndIsStale) {
    const auto made = bookmark.bookmarkForURL_RW(folder);
    files.move(u"/texts"_s, u"/archive/texts"_s);
    bool isStale = false;
    EXPECT_EQ(bookmark.urlForBookmark(made, &isStale), QUrl::fromLocalFile(u"/archive/texts"_s));
    EXPECT_TRUE(isStale);
    EXPECT_EQ(store.created().size(), 1U); // a stale bookmark is not created again
}

TEST_F(MWBookmarkTest, deletedItemGivesNil) {
    const auto made = bookmark.bookmarkForURL_RW(folder);
    files.remove(u"/texts"_s);
    bool isStale = true;
    EXPECT_FALSE(bookmark.urlForBookmark(made, &isStale));
    EXPECT_FALSE(isStale);
}

TEST_F(MWBookmarkTest, urlBesideAnErrorGivesNil) {
    const auto made = bookmark.bookmarkForURL_RW(folder);
    const auto madeForDocument = bookmark.docBookmarkForURL_RW(folder, document);
    store.fail(FakeBookmarkStore::Failure::errorBesideResult);
    bool isStale = false;
    EXPECT_FALSE(bookmark.urlForBookmark(made, &isStale));
    EXPECT_FALSE(bookmark.urlForDocBookmark(madeForDocument, document, &isStale));
}

TEST_F(MWBookmarkTest, resolutionThatYieldsNeitherUrlNorErrorGivesNil) {
    const auto made = bookmark.bookmarkForURL_RW(folder);
    store.fail(FakeBookmarkStore::Failure::nothingWithoutError);
    bool isStale = false;
    EXPECT_FALSE(bookmark.urlForBookmark(made, &isStale));
}

TEST_F(MWBookmarkTest, writingThroughAReadOnlyBookmarkIsRefused) {
    bool isStale = false;
    const auto readOnly = bookmark.urlForBookmark(bookmark.bookmarkForURL_RO(folder), &isStale);
    ASSERT_TRUE(readOnly && store.startAccessingSecurityScopedResource(*readOnly));
    EXPECT_FALSE(files.writeToFileAtomically("text", u"/texts/a.txt"_s));
    store.stopAccessingSecurityScopedResource(*readOnly);

    const auto readWrite = bookmark.urlForBookmark(bookmark.bookmarkForURL_RW(folder), &isStale);
    ASSERT_TRUE(readWrite && store.startAccessingSecurityScopedResource(*readWrite));
    EXPECT_TRUE(files.writeToFileAtomically("text", u"/texts/a.txt"_s));
}

TEST_F(MWBookmarkTest, accessIsLeftToTheCaller) {
    bool isStale = false;
    EXPECT_TRUE(bookmark.urlForBookmark(bookmark.bookmarkForURL_RW(folder), &isStale));
    EXPECT_EQ(store.openAccesses(), 0);
    EXPECT_TRUE(journal.entries().isEmpty());
}

} // namespace
} // namespace quillow
