#include "platform/qt/files/GroupedFileSystem.h"

#include "base/PathBytes.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <system_error>
#include <utility>

namespace quillow {
namespace {

QByteArray nameOf(QByteArray path) {
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path.mid(path.lastIndexOf('/') + 1);
}

} // namespace

/// Brings the bytes of all files to the disk, and then gives each its name: after a crash of the system a file is the
/// old one or the new one. Then syncs the folder of the last one; the system soon does the same for other folders.
void GroupedFileSystem::finish(std::vector<Write>& writes) {
    const UnnamedFile& first = writes.front().file;
    const bool isTogether = writes.size() > 1 && first.syncAll();
    for (Write& write : writes) {
        const bool isOnDisk = (isTogether && write.file.isSyncedWith(first)) || write.file.sync();
        try {
            write.isPlaced = isOnDisk && write.file.place();
        } catch (const std::bad_alloc&) { // for a path; as after a failed write, the file gets no name
        }
    }
    writes.back().file.syncFolder();
}

GroupedFileSystem::GroupedFileSystem(QtFileSystem& inner, MainQueue& mainQueue, ThreadStarter startThread)
    : inner_(inner)
    , mainQueue_(mainQueue)
    , startThread_(std::move(startThread)) {}

GroupedFileSystem::~GroupedFileSystem() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
}

bool GroupedFileSystem::writeToFileAtomically(const QByteArray& bytes, const QString& path, const WriteFailed& failed) {
    UnnamedFile file = inner_.writeUnnamed(bytes, path);
    std::unique_lock lock(mutex_);
    if (!file.isWritten() || !hasThread()) {
        lock.unlock();
        const bool isPlaced = file.isWritten() && file.sync() && file.place();
        if (!isPlaced && failed) failed(QtFileSystem::causeOf(file.error()));
        return isPlaced;
    }
    changed_.wait(lock, [this] { return unnamed_.size() < kMaximumWaiting; });
    const QByteArray name = nameOf(file.target());
    waiting_.push_back({std::move(file), failed});
    try {
        unnamed_.push_back(name);
    } catch (const std::bad_alloc&) {
        waiting_.pop_back();
        return false;
    }
    if (!std::exchange(isPromised_, true))
        mainQueue_.addOperation([this] {
            endGroup();
            isPromised_ = false;
        });
    changed_.notify_all();
    return true;
}

bool GroupedFileSystem::hasThread() {
    try {
        if (!thread_.joinable()) thread_ = startThread_([this] { work(); });
    } catch (const std::system_error&) {
        return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

void GroupedFileSystem::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        std::vector<Write> group = std::exchange(waiting_, {});
        lock.unlock();
        try {
            finish(group);
        } catch (const std::bad_alloc&) { // for the path of the folder; the system soon syncs it by itself
        }
        lock.lock();
        keepFailures(group);
        unnamed_.erase(unnamed_.begin(), unnamed_.begin() + static_cast<std::ptrdiff_t>(group.size()));
        changed_.notify_all();
    }
}

/// Called under the lock.
void GroupedFileSystem::keepFailures(std::vector<Write>& writes) {
    for (Write& write : writes) {
        if (write.isPlaced || !write.failed) continue;
        try {
            failures_.emplace_back(std::move(write.failed), write.file.error());
        } catch (const std::bad_alloc&) { // nothing can be told
        }
    }
}

void GroupedFileSystem::endGroup() {
    waitForAll();
    std::unique_lock lock(mutex_);
    const auto failures = std::exchange(failures_, {});
    lock.unlock();
    for (const auto& [failed, error] : failures)
        failed(QtFileSystem::causeOf(error));
}

void GroupedFileSystem::waitForAll() const {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return unnamed_.empty(); });
}

/// Only the names are compared: a path may lead through links.
void GroupedFileSystem::waitFor(const QString& path) const {
    const QByteArray name = nameOf(pathToBytes(path));
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return std::find(unnamed_.begin(), unnamed_.end(), name) == unnamed_.end(); });
}

std::optional<QByteArray> GroupedFileSystem::contentsOfFile(const QString& path) const {
    waitFor(path);
    return inner_.contentsOfFile(path);
}

bool GroupedFileSystem::isTooLarge(const QString& path) const {
    waitFor(path);
    return inner_.isTooLarge(path);
}

bool GroupedFileSystem::fileExistsAtPath(const QString& path, bool* isDirectory) const {
    waitFor(path);
    return inner_.fileExistsAtPath(path, isDirectory);
}

bool GroupedFileSystem::createDirectory(const QString& path) {
    waitForAll();
    return inner_.createDirectory(path);
}

std::optional<QStringList> GroupedFileSystem::contentsOfDirectory(const QString& path) const {
    waitForAll();
    return inner_.contentsOfDirectory(path);
}

bool GroupedFileSystem::copyItem(const QString& path, const QString& toPath) {
    waitForAll();
    return inner_.copyItem(path, toPath);
}

bool GroupedFileSystem::removeItem(const QString& path) {
    waitForAll();
    return inner_.removeItem(path);
}

} // namespace quillow
