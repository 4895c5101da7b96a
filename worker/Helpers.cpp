#include "worker/Helpers.h"

#include "posix/Arenas.h"

#include <algorithm>
#include <limits>
#include <new>
#include <system_error>

namespace quillow::worker {

namespace {

/// glibc's allocator opens files where there are several threads, which a locked worker cannot: to count the processors
/// when it makes another arena, and to ask whether it may make one smaller. With these settings it does neither.
void adaptAllocator(unsigned threads) {
    constexpr int kLargestMapped = 32 << 20; // what it reaches by itself in a process that lives long
    ::mallopt(M_ARENA_MAX, static_cast<int>(arenasFor(threads)));
    ::mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    ::mallopt(M_MMAP_THRESHOLD, kLargestMapped);
}

} // namespace

Helpers::Helpers(unsigned count) {
    if (count == 0) return;
    adaptAllocator(count + 1);
    make(count);
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return waiting_ == threads_.size(); });
}

Helpers::~Helpers() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    mayBegin_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void Helpers::make(unsigned count) {
    try {
        threads_.reserve(count);
        while (threads_.size() < count)
            threads_.emplace_back([this] { help(); });
    } catch (const std::system_error&) { // The system starts no more threads; those that there are help.
    } catch (const std::bad_alloc&) {
    }
}

void Helpers::run(unsigned threads, const std::function<void()>& work) {
    {
        const std::lock_guard lock(mutex_);
        work_ = &work;
        wanted_ = std::min(std::max(threads, 1U) - 1, static_cast<unsigned>(threads_.size()));
        for (unsigned i = 0; i < wanted_; ++i)
            mayBegin_.notify_one();
    }
    work();
    std::unique_lock lock(mutex_);
    wanted_ = 0; // one that has not begun yet is not needed any more
    changed_.wait(lock, [this] { return waiting_ == threads_.size(); });
}

void Helpers::help() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++waiting_;
        changed_.notify_one();
        mayBegin_.wait(lock, [this] { return isEnding_ || wanted_ > 0; });
        --waiting_;
        if (isEnding_) return;
        --wanted_;
        const std::function<void()>& work = *work_;
        lock.unlock();
        work();
        lock.lock();
    }
}

} // namespace quillow::worker
