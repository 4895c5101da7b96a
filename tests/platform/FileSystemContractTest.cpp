// The contract of the file system port, for all implementations.
#include "base/PathBytes.h"
#include "platform/qt/files/GroupedFileSystem.h"
#include "tests/fakes/FakeMainQueue.h"
#include "tests/platform/FileWorlds.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

template <class World>
class FileSystemContract : public testing::Test {
protected:
    QString at(const char16_t* name) const { return world_.root() + u'/' + QString::fromUtf16(name); }
    FileSystem& files() { return world_.fileSystem; }
    World world_;
};

/// As conversions see the disk.
struct GroupedFileWorld : DiskFileWorld {
    Journal journal;
    FakeMainQueue mainQueue;
    GroupedFileSystem fileSystem{DiskFileWorld::fileSystem, mainQueue};
};
using Worlds = testing::Types<FakeFileWorld, DiskFileWorld, GroupedFileWorld>;
TYPED_TEST_SUITE(FileSystemContract, Worlds);

TYPED_TEST(FileSystemContract, readsAWholeFile) {
    const QByteArray bytes("a\0b\r\n\xFF", 6);
    this->world_.addFile(this->at(u"in.rtf"), bytes);
    EXPECT_EQ(this->files().contentsOfFile(this->at(u"in.rtf")), bytes);
}

TYPED_TEST(FileSystemContract, tellsAnEmptyFileFromNone) {
    this->world_.addFile(this->at(u"empty.rtf"), {});
    const auto empty = this->files().contentsOfFile(this->at(u"empty.rtf"));
    ASSERT_TRUE(empty.has_value());
    EXPECT_TRUE(empty->isEmpty());
    EXPECT_FALSE(this->files().contentsOfFile(this->at(u"missing.rtf")).has_value());
}

TYPED_TEST(FileSystemContract, readsNoFolder) {
    this->world_.addFolder(this->at(u"folder"));
    EXPECT_FALSE(this->files().contentsOfFile(this->at(u"folder")).has_value());
}

TYPED_TEST(FileSystemContract, tellsFilesFromFolders) {
    this->world_.addFile(this->at(u"file"), "x");
    this->world_.addFolder(this->at(u"folder"));
    bool isDirectory = true;
    EXPECT_TRUE(this->files().fileExistsAtPath(this->at(u"file"), &isDirectory));
    EXPECT_FALSE(isDirectory);
    EXPECT_TRUE(this->files().fileExistsAtPath(this->at(u"folder"), &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_TRUE(this->files().fileExistsAtPath(this->at(u"folder"), nullptr));
}

TYPED_TEST(FileSystemContract, leavesIsDirectoryAloneWhereNothingStands) {
    bool isDirectory = true;
    EXPECT_FALSE(this->files().fileExistsAtPath(this->at(u"missing"), &isDirectory));
    EXPECT_TRUE(isDirectory);
}

TYPED_TEST(FileSystemContract, followsSymbolicLinks) {
    this->world_.addFolder(this->at(u"folder"));
    this->world_.addSymbolicLink(this->at(u"link"), this->at(u"folder"));
    this->world_.addSymbolicLink(this->at(u"dangling"), this->at(u"missing"));
    bool isDirectory = false;
    EXPECT_TRUE(this->files().fileExistsAtPath(this->at(u"link"), &isDirectory));
    EXPECT_TRUE(isDirectory);
    EXPECT_FALSE(this->files().fileExistsAtPath(this->at(u"dangling"), nullptr));
}

TYPED_TEST(FileSystemContract, slashAtTheEndMakesNoDifference) {
    this->world_.addFile(this->at(u"file"), "x");
    this->world_.addFolder(this->at(u"folder"));
    EXPECT_TRUE(this->files().fileExistsAtPath(this->at(u"file/"), nullptr));
    EXPECT_TRUE(this->files().fileExistsAtPath(this->at(u"folder//"), nullptr));
}

TYPED_TEST(FileSystemContract, nothingStandsAtRelativeOrEmptyPaths) {
    EXPECT_FALSE(this->files().fileExistsAtPath(QString(), nullptr));
    EXPECT_FALSE(this->files().fileExistsAtPath(QStringLiteral("."), nullptr));
    EXPECT_FALSE(this->files().contentsOfFile(QStringLiteral("CMakeCache.txt")).has_value());
}

TYPED_TEST(FileSystemContract, writesANewFile) {
    EXPECT_TRUE(this->files().writeToFileAtomically("text\n", this->at(u"out.txt")));
    EXPECT_EQ(this->files().contentsOfFile(this->at(u"out.txt")), QByteArray("text\n"));
}

TYPED_TEST(FileSystemContract, replacesAnOlderFile) {
    this->world_.addFile(this->at(u"out.txt"), "a longer text that was there before");
    EXPECT_TRUE(this->files().writeToFileAtomically({}, this->at(u"out.txt")));
    EXPECT_EQ(this->files().contentsOfFile(this->at(u"out.txt")), QByteArray());
}

TYPED_TEST(FileSystemContract, refusesToWriteOverAFolderOrIntoNone) {
    this->world_.addFolder(this->at(u"out.txt"));
    EXPECT_FALSE(this->files().writeToFileAtomically("x", this->at(u"out.txt")));
    EXPECT_FALSE(this->files().writeToFileAtomically("x", this->at(u"missing/out.txt")));
}

TYPED_TEST(FileSystemContract, keepsNamesWithBlanksQuotesAndOtherScripts) {
    const QString path = this->at(u"it's \"q\" %41 \u00FCber \u6587\u66F8 \U0001F600.txt");
    EXPECT_TRUE(this->files().writeToFileAtomically("x", path));
    EXPECT_EQ(this->files().contentsOfFile(path), QByteArray("x"));
}

TYPED_TEST(FileSystemContract, keepsTheBytesOfNamesThatAreNotUtf8) {
    const QString folder = this->world_.root() + pathFromBytes("/d\xE9p\xF4t");
    const QString path = folder + pathFromBytes("/caf\xE9.txt");
    EXPECT_TRUE(this->files().createDirectory(folder));
    EXPECT_TRUE(this->files().writeToFileAtomically("x", path));
    EXPECT_EQ(this->files().contentsOfFile(path), QByteArray("x"));
    EXPECT_EQ(this->files().contentsOfDirectory(folder), QStringList{pathFromBytes("caf\xE9.txt")});
    const QString copy = folder + pathFromBytes("/\xEF\xBB\xBF\xFF.txt");
    EXPECT_TRUE(this->files().copyItem(path, copy));
    EXPECT_TRUE(this->files().fileExistsAtPath(copy, nullptr));
    EXPECT_TRUE(this->files().removeItem(folder));
    EXPECT_FALSE(this->files().fileExistsAtPath(folder, nullptr));
}

TYPED_TEST(FileSystemContract, makesAFolderAndThoseOnTheWay) {
    EXPECT_TRUE(this->files().createDirectory(this->at(u"a/b/c")));
    bool isDirectory = false;
    EXPECT_TRUE(this->files().fileExistsAtPath(this->at(u"a/b/c"), &isDirectory) && isDirectory);
    EXPECT_TRUE(this->files().createDirectory(this->at(u"a/b")));
    this->world_.addFile(this->at(u"file"), "x");
    EXPECT_FALSE(this->files().createDirectory(this->at(u"file")));
}

TYPED_TEST(FileSystemContract, listsAFolder) {
    this->world_.addFile(this->at(u"folder/.hidden"), "x");
    this->world_.addFile(this->at(u"folder/inner/file"), "x");
    auto names = this->files().contentsOfDirectory(this->at(u"folder")).value_or(QStringList());
    names.sort();
    EXPECT_EQ(names, QStringList({QStringLiteral(".hidden"), QStringLiteral("inner")}));
    EXPECT_FALSE(this->files().contentsOfDirectory(this->at(u"missing")).has_value());
}

TYPED_TEST(FileSystemContract, copiesAFileToWhereNothingStands) {
    this->world_.addFile(this->at(u"in.pdf"), "bytes");
    EXPECT_TRUE(this->files().copyItem(this->at(u"in.pdf"), this->at(u"out.pdf")));
    EXPECT_EQ(this->files().contentsOfFile(this->at(u"out.pdf")), QByteArray("bytes"));
    this->world_.addFile(this->at(u"other.pdf"), "other");
    EXPECT_FALSE(this->files().copyItem(this->at(u"in.pdf"), this->at(u"other.pdf")));
    EXPECT_EQ(this->files().contentsOfFile(this->at(u"other.pdf")), QByteArray("other"));
    EXPECT_FALSE(this->files().copyItem(this->at(u"missing.pdf"), this->at(u"new.pdf")));
    EXPECT_FALSE(this->files().fileExistsAtPath(this->at(u"new.pdf"), nullptr));
}

TYPED_TEST(FileSystemContract, removesAFolderWithAllThatIsInItButNotWhatALinkPointsAt) {
    this->world_.addFile(this->at(u"kept/file"), "x");
    this->world_.addFile(this->at(u"folder/inner/file"), "x");
    this->world_.addSymbolicLink(this->at(u"folder/link"), this->at(u"kept"));
    EXPECT_TRUE(this->files().removeItem(this->at(u"folder")));
    EXPECT_FALSE(this->files().fileExistsAtPath(this->at(u"folder"), nullptr));
    EXPECT_TRUE(this->files().fileExistsAtPath(this->at(u"kept/file"), nullptr));
    EXPECT_FALSE(this->files().removeItem(this->at(u"folder")));
}

} // namespace
} // namespace quillow
