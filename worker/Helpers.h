// Threads that help to read a document. A locked worker can make none, so they are made before the lock.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace quillow::worker {

class Helpers {
public:
    /// Makes so many threads, or as many as the system gives. Returns when they wait for work: they need no system call
    /// any more but those of waiting.
    explicit Helpers(unsigned count);
    Helpers(const Helpers&) = delete;
    Helpers& operator=(const Helpers&) = delete;
    ~Helpers();

    /// Runs the work on the calling thread and at the same time on up to `threads` - 1 helpers. Returns when all have
    /// ended. The work must not throw.
    void run(unsigned threads, const std::function<void()>& work);

private:
    void make(unsigned count);
    void help();

    std::mutex mutex_;
    std::condition_variable mayBegin_;
    std::condition_variable changed_; ///< a helper waits again
    std::vector<std::thread> threads_;
    std::size_t waiting_ = 0;
    const std::function<void()>* work_ = nullptr;
    unsigned wanted_ = 0; ///< helpers that shall still begin the work
    bool isEnding_ = false;
};

} // namespace quillow::worker
