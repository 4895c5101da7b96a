#include "cli/Batch.h"

#include <algorithm>
#include <condition_variable>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace quillow::cli {

namespace {

using Work = std::function<Result(std::size_t)>;
using Deliver = std::function<Next(std::size_t, Result, Following)>;

class Batch {
public:
    Batch(std::size_t count, std::size_t window, const Work& work)
        : count_(count)
        , window_(window)
        , work_(work) {}

    void workUntilDone() {
        while (const auto index = begin())
            end(*index, work_(*index));
    }

    void deliverAll(const Deliver& deliver) {
        for (std::size_t index = 0; index < count_; ++index) {
            auto [result, following] = take(index);
            if (deliver(index, std::move(result), following) == Next::stop) break;
        }
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        mayBegin_.notify_all();
    }

private:
    [[nodiscard]] bool mayBegin() const {
        if (begun_ == delivered_) return true;
        return begun_ - delivered_ < window_ && waitingBytes_ < kWaitingBytes;
    }

    std::optional<std::size_t> begin() {
        std::unique_lock lock(mutex_);
        mayBegin_.wait(lock, [&] { return stopped_ || begun_ == count_ || mayBegin(); });
        if (stopped_ || begun_ == count_) return std::nullopt;
        return begun_++;
    }

    void end(std::size_t index, Result result) {
        const std::lock_guard lock(mutex_);
        if (result.text) waitingBytes_ += result.text->size();
        waiting_.emplace(index, std::move(result));
        arrived_.notify_one();
    }

    std::pair<Result, Following> take(std::size_t index) {
        std::unique_lock lock(mutex_);
        arrived_.wait(lock, [&] { return waiting_.contains(index); });
        Result result = std::move(waiting_.extract(index).mapped());
        if (result.text) waitingBytes_ -= result.text->size();
        delivered_ = index + 1;
        mayBegin_.notify_all();
        return {std::move(result), waiting_.contains(index + 1) ? Following::arrived : Following::none};
    }

    const std::size_t count_;
    const std::size_t window_;
    const Work& work_;
    std::mutex mutex_;
    std::condition_variable mayBegin_;
    std::condition_variable arrived_;
    std::map<std::size_t, Result> waiting_;
    std::size_t waitingBytes_ = 0;
    std::size_t begun_ = 0;
    std::size_t delivered_ = 0;
    bool stopped_ = false;
};

void runInTurn(std::size_t count, const Work& work, const Deliver& deliver) {
    for (std::size_t index = 0; index < count; ++index)
        if (deliver(index, work(index), Following::none) == Next::stop) return;
}

} // namespace

void runBatch(std::size_t count, unsigned jobs, const Work& work, const Deliver& deliver) {
    if (count <= 1) return runInTurn(count, work, deliver);
    const std::size_t threadCount = std::min<std::size_t>(jobs, count);
    Batch batch(count, std::max(threadCount, std::min(threadCount * kWaitingPerJob, kMaximumWaiting)), work);
    std::vector<std::thread> threads;
    try {
        while (threads.size() < threadCount)
            threads.emplace_back([&batch] { batch.workUntilDone(); });
    } catch (const std::system_error&) {
        // The system starts no more threads. The threads that have started do the work.
        if (threads.empty()) return runInTurn(count, work, deliver);
    }
    batch.deliverAll(deliver);
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace quillow::cli
