#include "cli/PendingFile.h"

#include "tests/cli/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace quillow::cli {
namespace {

using test::readFile;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

class PendingFiles : public testing::Test {
protected:
    TemporaryFolder folder_;
    FileDescriptor opened_{::open(folder_.at("").c_str(), O_RDONLY | O_DIRECTORY)};
};

TEST_F(PendingFiles, aFileThatIsNotPlacedLeavesNothing) {
    {
        const PendingFile file(opened_.number());
        ASSERT_TRUE(file.isOpen());
        EXPECT_TRUE(file.write("text"));
    }
    EXPECT_EQ(folder_.names(), Names{});
}

TEST_F(PendingFiles, aPlacedFileIsWhole) {
    PendingFile file(opened_.number());
    EXPECT_TRUE(file.write("te") && file.write("xt"));
    EXPECT_TRUE(file.sync());

    EXPECT_TRUE(file.place("a", Present::kept));

    EXPECT_EQ(readFile(folder_.at("a")), "text");
    EXPECT_EQ(folder_.names(), Names{"a"});
}

TEST_F(PendingFiles, anExistingFileStaysIfItIsToBeKept) {
    folder_.put("a", "old");
    {
        PendingFile file(opened_.number());
        EXPECT_FALSE(file.place("a", Present::kept));
        EXPECT_EQ(errno, EEXIST);
    }
    EXPECT_EQ(readFile(folder_.at("a")), "old");
    EXPECT_EQ(folder_.names(), Names{"a"});
}

TEST_F(PendingFiles, filesOfKilledProgramsAreRemovedAndNoOthers) {
    folder_.put(".quillow-convert.0123456789abcdef.tmp", "killed");
    folder_.put(".quillow-convert.tmp.txt", "a text");
    folder_.put("quillow-convert.x.tmp", "another program's");
    std::filesystem::create_symlink("nowhere", folder_.at(".quillow-convert.link.tmp"));
    std::filesystem::create_directory(folder_.at(".quillow-convert.folder.tmp"));
    ASSERT_EQ(::mkfifo(folder_.at(".quillow-convert.pipe.tmp").c_str(), 0600), 0);
    const std::string living = folder_.put(".quillow-convert.fedcba9876543210.tmp", "living");
    const FileDescriptor writer(::open(living.c_str(), O_WRONLY));
    ASSERT_EQ(::flock(writer.number(), LOCK_EX), 0);

    PendingFile::removeLeftOver(opened_.number());

    EXPECT_EQ(folder_.names(), (Names{".quillow-convert.fedcba9876543210.tmp", ".quillow-convert.folder.tmp",
                                      ".quillow-convert.link.tmp", ".quillow-convert.pipe.tmp",
                                      ".quillow-convert.tmp.txt", "quillow-convert.x.tmp"}));
}

TEST_F(PendingFiles, aFileThatIsTakenAwayFromItsWriterIsLocked) {
    PendingFile file(opened_.number());
    folder_.put("a", "old");
    EXPECT_TRUE(file.place("a", Present::replaced)); // through a temporary name

    const FileDescriptor taken = file.takeFile();

    const FileDescriptor other(::open(folder_.at("a").c_str(), O_WRONLY));
    EXPECT_NE(::flock(other.number(), LOCK_EX | LOCK_NB), 0);
}

} // namespace
} // namespace quillow::cli
