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

using MakeJob = std::function<std::unique_ptr<Job>()>;
using Deliver = std::function<Next(std::size_t, Result, Following)>;

class Batch {
public:
    Batch(std::size_t count, std::size_t threads)
        : count_(count)
        , threads_(threads)
        , window_(std::max(threads, std::min(threads * kWaitingPerJob, kMaximumWaiting))) {}

    void workUntilDone(Job& job) {
        for (std::optional<std::size_t> begun;;) {
            const auto index = begun ? nextEarly(job) : next();
            if (!index && !begun) return;
            if (index) job.begin(*index);
            if (begun) end(*begun, job.end(*begun));
            begun = index;
        }
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

    std::optional<std::size_t> next() {
        std::unique_lock lock(mutex_);
        mayBegin_.wait(lock, [&] { return stopped_ || begun_ == count_ || mayBegin(); });
        if (stopped_ || begun_ == count_) return std::nullopt;
        return begun_++;
    }

    /// The next item, if it may be begun at once and early. The last ones are left to threads that have none.
    std::optional<std::size_t> nextEarly(const Job& job) {
        for (std::optional<std::size_t> asked;;) {
            {
                const std::lock_guard lock(mutex_);
                if (stopped_ || count_ - begun_ < threads_ || !mayBegin()) return std::nullopt;
                if (asked == begun_) return begun_++;
                asked = begun_;
            }
            if (!job.mayBeginEarly(*asked)) return std::nullopt;
        }
    }

    void end(std::size_t index, Result result) {
        const std::lock_guard lock(mutex_);
        if (result.text) waitingBytes_ += result.text->size();
        waiting_.emplace(index, std::move(result));
        if (index == awaited_) arrived_.notify_one();
    }

    std::pair<Result, Following> take(std::size_t index) {
        std::unique_lock lock(mutex_);
        awaited_ = index;
        arrived_.wait(lock, [&] { return waiting_.contains(index); });
        Result result = std::move(waiting_.extract(index).mapped());
        if (result.text) waitingBytes_ -= result.text->size();
        delivered_ = index + 1;
        mayBegin_.notify_all();
        return {std::move(result), waiting_.contains(index + 1) ? Following::arrived : Following::none};
    }

    const std::size_t count_;
    const std::size_t threads_;
    const std::size_t window_;
    std::mutex mutex_;
    std::condition_variable mayBegin_;
    std::condition_variable arrived_;
    std::map<std::size_t, Result> waiting_;
    std::size_t waitingBytes_ = 0;
    std::size_t begun_ = 0;
    std::size_t delivered_ = 0;
    std::size_t awaited_ = 0; ///< the result that is delivered next
    bool stopped_ = false;
};

void runInTurn(std::size_t count, Job& job, const Deliver& deliver) {
    for (std::size_t index = 0; index < count; ++index) {
        job.begin(index);
        if (deliver(index, job.end(index), Following::none) == Next::stop) return;
    }
}

} // namespace

void runBatch(std::size_t count, unsigned jobs, const MakeJob& makeJob, const Deliver& deliver) {
    if (count <= 1) return runInTurn(count, *makeJob(), deliver);
    const std::size_t threadCount = std::min<std::size_t>(jobs, count);
    Batch batch(count, threadCount);
    std::vector<std::thread> threads;
    try {
        while (threads.size() < threadCount)
            threads.emplace_back([&batch, job = makeJob()] { batch.workUntilDone(*job); });
    } catch (const std::system_error&) {
        // The system starts no more threads. The threads that have started do the work.
        if (threads.empty()) return runInTurn(count, *makeJob(), deliver);
    }
    batch.deliverAll(deliver);
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace quillow::cli
