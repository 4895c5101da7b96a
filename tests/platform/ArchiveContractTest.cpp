// The contract of the archive port, for all implementations, and damaged files on the disk.
#include "platform/qt/storage/QtArchive.h"
#include "tests/fakes/FakeArchive.h"
#include "tests/platform/FileWorlds.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

struct FakeArchiveWorld {
    FakeFileWorld files;
    FakeArchive archive{files.fileSystem};
};

struct DiskArchiveWorld {
    DiskFileWorld files;
    QtArchive archive{files.fileSystem};
};

template <class World>
class ArchiveContract : public testing::Test {
protected:
    Archive& archive() { return world_.archive; }
    FileSystem& fileSystem() { return world_.files.fileSystem; }
    QString path(const QString& name = u"data"_s) { return world_.files.root() + u'/' + name; }
    void addFile(const QByteArray& bytes) { world_.files.addFile(path(), bytes); }
    const Boxed root_ = Boxed::Dictionary{
        {u"appversion"_s, 10501}, {u"logContent"_s, u"\nA\u202FB \U0001F600"_s + QChar(0xD800)}, {u"bigWin"_s, true}};
    World world_;
};
using Worlds = testing::Types<FakeArchiveWorld, DiskArchiveWorld>;
TYPED_TEST_SUITE(ArchiveContract, Worlds);

TYPED_TEST(ArchiveContract, givesBackWhatItTook) {
    EXPECT_TRUE(this->archive().archiveRootObject(this->root_, this->path()));
    EXPECT_EQ(this->archive().unarchiveObjectWithFile(this->path()), this->root_);
}

TYPED_TEST(ArchiveContract, replacesAnEarlierArchive) {
    EXPECT_TRUE(this->archive().archiveRootObject(this->root_, this->path()));
    EXPECT_TRUE(this->archive().archiveRootObject(u"other"_s, this->path()));
    EXPECT_EQ(this->archive().unarchiveObjectWithFile(this->path()), Boxed(u"other"_s));
}

TYPED_TEST(ArchiveContract, whatIsNoArchiveIsNil) {
    EXPECT_TRUE(this->archive().unarchiveObjectWithFile(this->path(u"missing"_s)).isNil());
    EXPECT_TRUE(this->archive().unarchiveObjectWithFile(this->world_.files.root()).isNil());
    this->addFile("text");
    EXPECT_TRUE(this->archive().unarchiveObjectWithFile(this->path()).isNil());
    this->addFile("");
    EXPECT_TRUE(this->archive().unarchiveObjectWithFile(this->path()).isNil());
}

TYPED_TEST(ArchiveContract, aFailureLeavesTheOldFile) {
    EXPECT_TRUE(this->archive().archiveRootObject(this->root_, this->path()));
    EXPECT_FALSE(this->archive().archiveRootObject(Image{}, this->path()));
    EXPECT_EQ(this->archive().unarchiveObjectWithFile(this->path()), this->root_);
    EXPECT_FALSE(this->archive().archiveRootObject(this->root_, this->path(u"missing/data"_s)));
}

TYPED_TEST(ArchiveContract, keepsWhatIsPutAsideAndTheEarlierOnes) {
    for (const char* bytes : {"first", "second", "third"}) {
        this->addFile(bytes);
        this->archive().putAside(this->path());
        EXPECT_FALSE(this->fileSystem().fileExistsAtPath(this->path(), nullptr));
    }
    EXPECT_TRUE(this->archive().archiveRootObject(this->root_, this->path()));
    EXPECT_EQ(this->fileSystem().contentsOfFile(this->path(u"data.damaged"_s)), "first");
    EXPECT_EQ(this->fileSystem().contentsOfFile(this->path(u"data.damaged-2"_s)), "second");
    EXPECT_EQ(this->fileSystem().contentsOfFile(this->path(u"data.damaged-3"_s)), "third");
}

class QtArchiveTest : public ArchiveContract<DiskArchiveWorld> {};

TEST_F(QtArchiveTest, putsAFolderAsideToo) {
    world_.files.addFile(path(u"data/inner"_s), "x");
    EXPECT_FALSE(archive().archiveRootObject(root_, path()));
    archive().putAside(path());
    EXPECT_TRUE(archive().archiveRootObject(root_, path()));
    EXPECT_EQ(fileSystem().contentsOfFile(path(u"data.damaged/inner"_s)), "x");
}

TEST_F(QtArchiveTest, tellsInOneLineWhereTheFileIsKept) {
    addFile("text");
    testing::internal::CaptureStderr();
    archive().putAside(path());
    const QString line = QString::fromStdString(testing::internal::GetCapturedStderr());
    EXPECT_EQ(line.count(u'\n'), 1);
    EXPECT_TRUE(line.contains(path() + u" "_s));
    EXPECT_TRUE(line.contains(path(u"data.damaged"_s)));
}

TEST_F(QtArchiveTest, doesNotReplaceWhatCouldNotBeMovedAside) {
    addFile("text");
    for (int number = 1; number <= 100; ++number)
        world_.files.addFile(path(number == 1 ? u"data.damaged"_s : u"data.damaged-%1"_s.arg(number)), "earlier");
    archive().putAside(path());
    EXPECT_FALSE(archive().archiveRootObject(root_, path()));
    EXPECT_EQ(fileSystem().contentsOfFile(path()), "text");
    EXPECT_EQ(fileSystem().contentsOfFile(path(u"data.damaged-100"_s)), "earlier");
}

TEST_F(QtArchiveTest, leavesNothingElseInTheFolder) {
    EXPECT_TRUE(archive().archiveRootObject(root_, path()));
    EXPECT_TRUE(archive().archiveRootObject(root_, path()));
    EXPECT_EQ(fileSystem().contentsOfDirectory(world_.files.root()), QStringList(u"data"_s));
}

TEST_F(QtArchiveTest, neverReadsAPipeOrAHugeFile) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    EXPECT_TRUE(archive().unarchiveObjectWithFile(path()).isNil());
    QFile huge(path(u"huge"_s));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    huge.write("bplist00");
    ASSERT_TRUE(huge.resize(QtArchive::kLargestFile + 1));
    huge.close();
    EXPECT_TRUE(archive().unarchiveObjectWithFile(path(u"huge"_s)).isNil());
}

} // namespace
} // namespace quillow
