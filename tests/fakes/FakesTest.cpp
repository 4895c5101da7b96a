// The fakes must keep the contracts of the ports; otherwise the tests that use them prove nothing.
#include "tests/fakes/FakeLogView.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

struct FakeFileSystemTest : testing::Test {
    Journal journal;
    FakeFileSystem files{journal};
    bool isDirectory(const QString& path) const {
        bool result = false;
        return files.fileExistsAtPath(path, &result) && result;
    }
};

TEST_F(FakeFileSystemTest, readsWholeFilesAndTellsEmptyFromNothing) {
    files.addFile(u"/a/full"_s, "bytes");
    files.addFile(u"/a/empty"_s);
    files.addFile(u"/a/locked"_s, "secret");
    files.makeUnreadable(u"/a/locked"_s);
    EXPECT_EQ(files.contentsOfFile(u"/a/full"_s), QByteArray("bytes"));
    EXPECT_EQ(files.contentsOfFile(u"/a/empty"_s), QByteArray());
    EXPECT_FALSE(files.contentsOfFile(u"/a/locked"_s));
    EXPECT_FALSE(files.contentsOfFile(u"/a/missing"_s));
    EXPECT_FALSE(files.contentsOfFile(u"/a"_s));
}

TEST_F(FakeFileSystemTest, existenceFollowsLinksAndIgnoresTrailingSlashes) {
    files.addFile(u"/a/file"_s);
    files.addSymbolicLink(u"/link"_s, u"/a"_s);
    files.addSymbolicLink(u"/dangling"_s, u"/nowhere"_s);
    files.addSymbolicLink(u"/loop"_s, u"/loop"_s);
    EXPECT_TRUE(isDirectory(u"/a"_s));
    EXPECT_TRUE(isDirectory(u"/a/"_s));
    EXPECT_TRUE(isDirectory(u"/link"_s));
    EXPECT_TRUE(isDirectory(u"/"_s));
    EXPECT_FALSE(isDirectory(u"/link/file"_s));
    EXPECT_TRUE(files.fileExistsAtPath(u"/link/file"_s, nullptr));
    EXPECT_FALSE(files.fileExistsAtPath(u"/dangling"_s, nullptr));
    EXPECT_FALSE(files.fileExistsAtPath(u"/loop"_s, nullptr));
    EXPECT_FALSE(files.fileExistsAtPath(u""_s, nullptr));
    EXPECT_FALSE(files.fileExistsAtPath(u"a/file"_s, nullptr));
}

TEST_F(FakeFileSystemTest, missingItemLeavesTheFolderAnswerAlone) {
    bool answer = true;
    EXPECT_FALSE(files.fileExistsAtPath(u"/missing"_s, &answer));
    EXPECT_TRUE(answer);
}

TEST_F(FakeFileSystemTest, writeReplacesOrLeavesTheOldFile) {
    files.addFile(u"/a/file"_s, "old");
    EXPECT_TRUE(files.writeToFileAtomically("new", u"/a/file"_s));
    EXPECT_EQ(files.contentsOfFile(u"/a/file"_s), QByteArray("new"));
    EXPECT_FALSE(files.writeToFileAtomically("new", u"/missing/file"_s));
    EXPECT_FALSE(files.writeToFileAtomically("new", u"/a"_s));
    files.setDiskFull();
    EXPECT_FALSE(files.writeToFileAtomically("newer", u"/a/file"_s));
    EXPECT_EQ(files.contentsOfFile(u"/a/file"_s), QByteArray("new"));
}

TEST_F(FakeFileSystemTest, movedFolderTakesItsItemsAlong) {
    files.addFile(u"/a/b/file"_s, "bytes");
    const auto number = files.itemNumber(u"/a/b"_s);
    files.move(u"/a/b"_s, u"/c/d"_s);
    EXPECT_FALSE(files.fileExistsAtPath(u"/a/b/file"_s, nullptr));
    EXPECT_EQ(files.contentsOfFile(u"/c/d/file"_s), QByteArray("bytes"));
    EXPECT_EQ(files.pathOfItem(number), u"/c/d"_s);
}

TEST(FakeWorkspace, onlyANonEmptyRtfdFolderIsAFilePackage) {
    FakePlatform fakes;
    fakes.files.addFile(u"/a/Letter.RTFD/TXT.rtf"_s);
    fakes.files.addFolder(u"/a/Empty.rtfd"_s);
    fakes.files.addFile(u"/a/plain/TXT.rtf"_s);
    fakes.files.addFile(u"/a/file.rtfd"_s);
    EXPECT_TRUE(fakes.workspace.isFilePackageAtPath(u"/a/Letter.RTFD"_s));
    EXPECT_TRUE(fakes.workspace.isFilePackageAtPath(u"/a/Letter.RTFD/"_s));
    EXPECT_FALSE(fakes.workspace.isFilePackageAtPath(u"/a/Empty.rtfd"_s));
    EXPECT_FALSE(fakes.workspace.isFilePackageAtPath(u"/a/plain"_s));
    EXPECT_FALSE(fakes.workspace.isFilePackageAtPath(u"/a/file.rtfd"_s));
    EXPECT_FALSE(fakes.workspace.isFilePackageAtPath(u"/a/missing.rtfd"_s));
}

TEST(FakeMainQueue, runsInOrderAndOnlyWhenTold) {
    FakeMainQueue queue;
    std::vector<int> ran;
    queue.addOperation([&] {
        ran.push_back(1);
        queue.addOperation([&] { ran.push_back(3); });
    });
    queue.addOperation([&] { ran.push_back(2); });
    EXPECT_TRUE(ran.empty());
    queue.runAll();
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
}

TEST(FakeLogView, newCharactersCarryNoColour) {
    FakeLogView view;
    view.replaceCharactersInRange({0, 0}, u"abcd"_s);
    view.addForegroundColor({}, {1, 2});
    view.replaceCharactersInRange({2, 1}, u"xy"_s);
    EXPECT_EQ(view.string(), u"abxyd"_s);
    EXPECT_EQ(view.length(), 5);
    const std::vector<std::optional<Color>> expected{std::nullopt, Color{}, std::nullopt, std::nullopt, std::nullopt};
    EXPECT_EQ(view.colors(), expected);
}

TEST(FakeDefaults, nilRemovesAndEmptyStays) {
    FakeDefaults defaults;
    defaults.setObject(QByteArray(), u"a"_s);
    EXPECT_EQ(defaults.objectForKey(u"a"_s), Boxed(QByteArray()));
    defaults.setObject({}, u"a"_s);
    EXPECT_TRUE(defaults.objectForKey(u"a"_s).isNil());
}

} // namespace
} // namespace quillow
