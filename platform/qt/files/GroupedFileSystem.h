// The file system for conversions: the texts of one drop or batch reach the disk in groups, on a thread of its own.
#pragma once

#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/qt/files/QtFileSystem.h"
#include "platform/qt/files/UnnamedFile.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace quillow {

/// A written file gets its name when its bytes are on the disk. The writer does not wait for that. The outside sees no
/// difference: before the main queue's next operation, and so before the log says that a document is converted, every
/// file has its name. Calls that could see a file that has no name yet wait until it has it.
///
/// deliberate: a write returns false only if the bytes cannot be written. If the file then does not get its name, only
/// the writer's `failed` is called.
class GroupedFileSystem final : public FileSystem {
public:
    using ThreadStarter = std::function<std::thread(std::function<void()> run)>;

    GroupedFileSystem(QtFileSystem& inner, MainQueue& mainQueue, ThreadStarter startThread = &startedThread);
    GroupedFileSystem(const GroupedFileSystem&) = delete;
    GroupedFileSystem& operator=(const GroupedFileSystem&) = delete;
    /// Finishes all writes.
    ~GroupedFileSystem() override;

    [[nodiscard]] std::optional<QByteArray> contentsOfFile(const QString& path) const override;
    [[nodiscard]] bool isTooLarge(const QString& path) const override;
    [[nodiscard]] bool fileExistsAtPath(const QString& path, bool* isDirectory) const override;
    using FileSystem::writeToFileAtomically;
    bool writeToFileAtomically(const QByteArray& bytes, const QString& path, const WriteFailed& failed) override;
    bool createDirectory(const QString& path) override;
    [[nodiscard]] std::optional<QStringList> contentsOfDirectory(const QString& path) const override;
    bool copyItem(const QString& path, const QString& toPath) override;
    bool removeItem(const QString& path) override;

private:
    /// The most files that wait for their names. Each is open.
    static constexpr std::size_t kMaximumWaiting = 128;

    [[nodiscard]] static std::thread startedThread(std::function<void()> run) { return std::thread(std::move(run)); }
    /// Makes the thread if there is none yet. Call it under the lock.
    [[nodiscard]] bool hasThread();
    void work();
    void waitForAll() const;
    /// Waits for all, and tells the writers of those that failed.
    void endGroup();
    void waitFor(const QString& path) const;

    QtFileSystem& inner_;
    MainQueue& mainQueue_;
    const ThreadStarter startThread_;
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    struct Write {
        UnnamedFile file;
        WriteFailed failed;
        bool isPlaced = false;
    };
    static void finish(std::vector<Write>& writes);
    void keepFailures(std::vector<Write>& writes);

    std::vector<Write> waiting_;
    std::vector<std::pair<WriteFailed, int>> failures_; ///< to be told on the main thread, with the error numbers
    std::deque<QByteArray> unnamed_;                    ///< the names, without their folders, of all files on their way
    bool isPromised_ = false;                           ///< the main queue has an operation that waits for all
    bool isEnding_ = false;
    std::thread thread_;
};

} // namespace quillow
