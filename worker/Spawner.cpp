#include "worker/Spawner.h"

#include <exception>
#include <system_error>
#include <utility>

namespace quillow::worker {

Spawner::Spawner(WorkerProgram program)
    : program_(std::move(program)) {}

Spawner::~Spawner() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_one();
    if (thread_.joinable()) thread_.join();
}

std::future<Spawner::Started> Spawner::start(std::vector<std::string> words) {
    Order order{std::move(words), {}};
    std::future<Started> future = order.promise.get_future();
    {
        const std::lock_guard lock(mutex_);
        if (hasThread()) {
            waiting_.push_back(std::move(order));
            changed_.notify_one();
            return future;
        }
    }
    order.promise.set_value(startProcess(program_, order.words));
    return future;
}

bool Spawner::hasThread() {
    try {
        if (!thread_.joinable()) thread_ = std::thread([this] { work(); });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void Spawner::work() {
    for (;;) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        if (isEnding_) return;
        Order order = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        try {
            order.promise.set_value(startProcess(program_, order.words));
        } catch (...) {
            order.promise.set_exception(std::current_exception());
        }
    }
}

} // namespace quillow::worker
