// The file system of conversions beyond the contract: when its files get their names.
#include "platform/qt/files/GroupedFileSystem.h"

#include "tests/fakes/FakeMainQueue.h"
#include "tests/platform/FileWorlds.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <future>
#include <optional>
#include <system_error>

namespace quillow {
namespace {

struct GroupedFileSystemTest : testing::Test {
    [[nodiscard]] QString at(int number) const { return world.root() + u'/' + QString::number(number); }
    /// As another program sees the disk.
    [[nodiscard]] std::optional<QByteArray> onDisk(const QString& path) const {
        return world.fileSystem.contentsOfFile(path);
    }

    DiskFileWorld world;
    FakeMainQueue mainQueue;
};

TEST_F(GroupedFileSystemTest, everyFileHasItsNameBeforeTheMainQueueGoesOn) {
    GroupedFileSystem files(world.fileSystem, mainQueue);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 300; ++i)
            EXPECT_TRUE(files.writeToFileAtomically(QByteArray::number(round), at(i)));
        int present = 0;
        mainQueue.addOperation([&] {
            for (int i = 0; i < 300; ++i)
                present += onDisk(at(i)) == QByteArray::number(round);
        });
        mainQueue.runAll();
        EXPECT_EQ(present, 300);
    }
}

TEST_F(GroupedFileSystemTest, oneOperationServesTheFilesOfADrop) {
    GroupedFileSystem files(world.fileSystem, mainQueue);
    for (int i = 0; i < 10; ++i)
        files.writeToFileAtomically("x", at(i));
    EXPECT_EQ(mainQueue.queuedCount(), 1U);
}

TEST_F(GroupedFileSystemTest, theLastOfTheFilesWithOneNameStays) {
    GroupedFileSystem files(world.fileSystem, mainQueue);
    for (int i = 0; i < 200; ++i)
        files.writeToFileAtomically(QByteArray::number(i), at(1));
    mainQueue.runAll();
    EXPECT_EQ(onDisk(at(1)), QByteArray("199"));
}

TEST_F(GroupedFileSystemTest, itsEndFinishesAllWrites) {
    {
        GroupedFileSystem files(world.fileSystem, mainQueue);
        for (int i = 0; i < 200; ++i)
            files.writeToFileAtomically("x", at(i));
    }
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(onDisk(at(i)), QByteArray("x"));
}

TEST_F(GroupedFileSystemTest, withoutAThreadFilesAreWrittenAtOnce) {
    GroupedFileSystem files(world.fileSystem, mainQueue, [](const std::function<void()>&) -> std::thread {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    });
    EXPECT_TRUE(files.writeToFileAtomically("x", at(1)));
    EXPECT_EQ(onDisk(at(1)), QByteArray("x"));
    EXPECT_EQ(mainQueue.queuedCount(), 0U);
}

TEST_F(GroupedFileSystemTest, aWriteThatFailsTellsTheCause) {
    GroupedFileSystem files(world.fileSystem, mainQueue);
    QStringList causes;
    const auto note = [&](const QString& cause) { causes.append(cause); };
    EXPECT_FALSE(files.writeToFileAtomically("x", at(1) + QStringLiteral("/missing/a.txt"), note));
    EXPECT_EQ(causes, QStringList{QtFileSystem::causeOf(ENOENT)});
}

TEST_F(GroupedFileSystemTest, aFileThatGetsNoNameIsToldBeforeTheQueuesNextOperation) {
    std::promise<void> gate;
    GroupedFileSystem files(world.fileSystem, mainQueue,
                            [opened = gate.get_future().share()](const std::function<void()>& run) {
                                return std::thread([opened, run] {
                                    opened.wait();
                                    run();
                                });
                            });
    QStringList events;
    EXPECT_TRUE(files.writeToFileAtomically("x", at(1), [&](const QString& cause) { events.append(cause); }));
    mainQueue.addOperation([&] { events.append(QStringLiteral("next")); });
    // A folder takes the file's name before it is placed.
    ASSERT_TRUE(world.fileSystem.createDirectory(at(1)));
    gate.set_value();
    mainQueue.runAll();
    EXPECT_EQ(events, (QStringList{QtFileSystem::causeOf(EISDIR), QStringLiteral("next")}));
}

} // namespace
} // namespace quillow
