// The disk's file system beyond the contract: modes, links, pipes, names that are not UTF-8, a full disk.
#include "base/PathBytes.h"
#include "tests/platform/FileWorlds.h"
#include "tests/platform/LittleMemory.h"
#include "tests/platform/SmallFilesOnly.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillow {
namespace {

class QtFileSystemTest : public testing::Test {
protected:
    QString at(const char16_t* name) const { return world_.root() + u'/' + QString::fromUtf16(name); }
    QByteArray name(const char16_t* name) const { return pathToBytes(at(name)); }
    mode_t modeOf(const char16_t* file) const {
        struct stat status = {};
        EXPECT_EQ(::stat(name(file).constData(), &status), 0);
        return status.st_mode & 07777U;
    }
    QStringList entries() const {
        return QDir(world_.root()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    DiskFileWorld world_;
};

TEST_F(QtFileSystemTest, aNewFileGetsTheModeOfTheUmask) {
    const mode_t former = ::umask(027);
    EXPECT_TRUE(world_.fileSystem.writeToFileAtomically("x", at(u"new.txt")));
    ::umask(former);
    EXPECT_EQ(modeOf(u"new.txt"), 0640U);
}

TEST_F(QtFileSystemTest, aReplacedFileKeepsItsMode) {
    world_.addFile(at(u"old.txt"), "old");
    ASSERT_EQ(::chmod(name(u"old.txt").constData(), 0604), 0);
    EXPECT_TRUE(world_.fileSystem.writeToFileAtomically("x", at(u"old.txt")));
    EXPECT_EQ(modeOf(u"old.txt"), 0604U);
}

TEST_F(QtFileSystemTest, aWriteThroughALinkReplacesWhatTheLinkLeadsTo) {
    world_.addFile(at(u"kept/real.txt"), "old");
    world_.addSymbolicLink(at(u"link.txt"), at(u"kept/real.txt"));
    EXPECT_TRUE(world_.fileSystem.writeToFileAtomically("new", at(u"link.txt")));
    EXPECT_TRUE(QFileInfo(at(u"link.txt")).isSymLink());
    EXPECT_EQ(world_.fileSystem.contentsOfFile(at(u"kept/real.txt")), QByteArray("new"));
}

TEST_F(QtFileSystemTest, aLinkOutOfAReadOnlyFolderIsNoWayIntoAnother) {
    world_.addFile(at(u"ro/real.txt"), "old");
    world_.addSymbolicLink(at(u"link.txt"), at(u"ro/real.txt"));
    world_.access.start(QFileInfo(at(u"ro")).canonicalFilePath(), AccessMode::readOnly);
    EXPECT_FALSE(world_.fileSystem.writeToFileAtomically("new", at(u"link.txt")));
    EXPECT_EQ(world_.fileSystem.contentsOfFile(at(u"ro/real.txt")), QByteArray("old"));
}

TEST_F(QtFileSystemTest, aFailedWriteLeavesTheOldFileAndNothingElse) {
    world_.addFile(at(u"old.txt"), "old");
    {
        const SmallFilesOnly fullDisk;
        EXPECT_FALSE(world_.fileSystem.writeToFileAtomically(QByteArray(5000, 'x'), at(u"old.txt")));
    }
    EXPECT_EQ(world_.fileSystem.contentsOfFile(at(u"old.txt")), QByteArray("old"));
    EXPECT_EQ(entries(), QStringList{QStringLiteral("old.txt")});
}

TEST_F(QtFileSystemTest, leavesNoTemporaryFileBehind) {
    EXPECT_TRUE(world_.fileSystem.writeToFileAtomically("x", at(u"a.txt")));
    EXPECT_EQ(entries(), QStringList{QStringLiteral("a.txt")});
}

TEST_F(QtFileSystemTest, doesNotWaitForANamedPipe) {
    ASSERT_EQ(::mkfifo(name(u"pipe.rtf").constData(), 0600), 0);
    EXPECT_FALSE(world_.fileSystem.contentsOfFile(at(u"pipe.rtf")).has_value());
}

TEST_F(QtFileSystemTest, readsFilesWhoseSizeIsNotKnownBefore) {
    const auto status = world_.fileSystem.contentsOfFile(QStringLiteral("/proc/self/status"));
    ASSERT_TRUE(status.has_value());
    EXPECT_TRUE(status->contains("VmPeak"));
}

TEST_F(QtFileSystemTest, refusesFilesTooLargeForMemory) {
    const int file = ::open(name(u"huge.pdf").constData(), O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(file, 0);
    ASSERT_EQ(::ftruncate(file, QtFileSystem::kMaximumFileSize + 1), 0);
    ::close(file);
    EXPECT_FALSE(world_.fileSystem.contentsOfFile(at(u"huge.pdf")).has_value());
    EXPECT_TRUE(world_.fileSystem.isTooLarge(at(u"huge.pdf")));
}

TEST_F(QtFileSystemTest, whatCannotBeReadForAnotherReasonIsNotTooLarge) {
    world_.addFile(at(u"file"), "x");
    world_.addFolder(at(u"folder"));
    for (const char16_t* name : {u"file", u"folder", u"missing"})
        EXPECT_FALSE(world_.fileSystem.isTooLarge(at(name)));
}

TEST_F(QtFileSystemTest, refusesRelativePathsAndNullCharacters) {
    EXPECT_FALSE(world_.fileSystem.writeToFileAtomically("x", QStringLiteral("relative.txt")));
    EXPECT_FALSE(world_.fileSystem.writeToFileAtomically("x", at(u"a") + QChar::Null + QStringLiteral("b")));
    EXPECT_TRUE(entries().isEmpty());
}

#ifndef __SANITIZE_ADDRESS__ // its allocator aborts the program instead
TEST_F(QtFileSystemTest, aFileLargerThanTheMemoryIsTooLarge) {
    world_.addFile(at(u"large"), "x");
    std::filesystem::resize_file(DiskFileWorld::native(at(u"large")), QtFileSystem::kMaximumFileSize);
    const LittleMemory littleMemory;
    EXPECT_FALSE(world_.fileSystem.contentsOfFile(at(u"large")).has_value());
    EXPECT_TRUE(world_.fileSystem.isTooLarge(at(u"large")));
}
#endif

TEST(AccessRegistry, theInnermostOpenedFolderDecides) {
    AccessRegistry access;
    access.start(QStringLiteral("/a"), AccessMode::readOnly);
    access.start(QStringLiteral("/a/b"), AccessMode::readWrite);
    EXPECT_FALSE(access.mayWrite(QStringLiteral("/a/x")));
    EXPECT_TRUE(access.mayWrite(QStringLiteral("/a/b/x")));
    EXPECT_TRUE(access.mayWrite(QStringLiteral("/ab/x")));
}

TEST(AccessRegistry, nestedOpeningsAreCounted) {
    AccessRegistry access;
    access.start(QStringLiteral("/a"), AccessMode::readOnly);
    access.start(QStringLiteral("/a"), AccessMode::readOnly);
    access.stop(QStringLiteral("/a"));
    EXPECT_FALSE(access.mayWrite(QStringLiteral("/a/x")));
    access.stop(QStringLiteral("/a"));
    EXPECT_TRUE(access.mayWrite(QStringLiteral("/a/x")));
    access.stop(QStringLiteral("/a"));
    EXPECT_TRUE(access.mayWrite(QStringLiteral("/a/x")));
}

} // namespace
} // namespace quillow
