// Starts workers on a thread of its own. A worker is killed when the thread that started it ends, so that none outlives
// its parent; that thread must therefore live as long as the workers may be used.
#pragma once

#include "worker/Process.h"

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <variant>
#include <vector>

namespace quillow::worker {

class Spawner {
public:
    using Started = std::variant<StartedProcess, std::string>;

    explicit Spawner(WorkerProgram program);
    Spawner(const Spawner&) = delete;
    Spawner& operator=(const Spawner&) = delete;
    ~Spawner();

    /// Begins the start of a worker with the words. If the system gives no thread, the caller's thread starts it.
    [[nodiscard]] std::future<Started> start(std::vector<std::string> words);

private:
    /// Makes the thread if there is none yet. Call it under the lock.
    [[nodiscard]] bool hasThread();
    void work();

    struct Order {
        std::vector<std::string> words;
        std::promise<Started> promise;
    };

    const WorkerProgram program_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Order> waiting_;
    bool isEnding_ = false;
    std::thread thread_;
};

} // namespace quillow::worker
