#include "engines/pdf/PageThreads.h"

#include <algorithm>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

namespace quillow::pdf {

unsigned threadsFor(std::size_t pages, unsigned wanted) {
    return static_cast<unsigned>(std::clamp<std::size_t>(pages / kPagesAThread, 1, std::max(wanted, 1U)));
}

bool PageThreads::read(unsigned threads, double share, const RunTogether& runTogether) {
    share_ = share;
    waiting_.resize(threads * kWindow);
    if (runTogether)
        runTogether(threads, [this] { work(); });
    else
        workTogether(threads);
    if (failure_) std::rethrow_exception(failure_);
    return !isVoid_;
}

void PageThreads::workTogether(unsigned threads) {
    std::vector<std::thread> helpers;
    try {
        helpers.reserve(threads);
        while (helpers.size() + 1 < threads)
            helpers.emplace_back([this] { work(); });
    } catch (const std::system_error&) { // The system starts no more threads; those that there are do the work.
    } catch (const std::bad_alloc&) {
        fail();
    }
    work();
    for (std::thread& helper : helpers)
        helper.join();
}

void PageThreads::work() {
    try {
        readPages();
    } catch (const std::bad_alloc&) {
        fail();
    }
}

void PageThreads::readPages() {
    const std::unique_ptr<PageSource> source = makeSource_();
    double shareBefore = 0;
    while (const auto page = begin()) {
        PageOutcome outcome = source->read(*page);
        const double share = source->usedShare();
        end(*page, std::move(outcome), share - std::exchange(shareBefore, share));
    }
}

std::optional<std::size_t> PageThreads::begin() {
    std::unique_lock lock(mutex_);
    mayBegin_.wait(lock, [this] { return isStopped_ || begun_ == pages_ || begun_ - added_ < waiting_.size(); });
    if (isStopped_ || begun_ == pages_) return std::nullopt;
    return begun_++;
}

void PageThreads::end(std::size_t page, PageOutcome outcome, double share) {
    const std::lock_guard lock(mutex_);
    if (isStopped_) return;
    share_ += share;
    if (outcome.loss.partsSkipped > 0 || share_ >= 1) {
        isVoid_ = true;
        return stop();
    }
    waiting_[page % waiting_.size()] = std::move(outcome);
    for (;;) {
        std::optional<PageOutcome>& next = waiting_[added_ % waiting_.size()];
        if (!next) break;
        if (!add_(*next)) return stop();
        next.reset();
        ++added_;
    }
    mayBegin_.notify_all();
}

/// The mutex must be locked.
void PageThreads::stop() {
    isStopped_ = true;
    mayBegin_.notify_all();
}

/// Keeps the exception that is being handled for the caller.
void PageThreads::fail() {
    const std::lock_guard lock(mutex_);
    if (!failure_) failure_ = std::current_exception();
    stop();
}

} // namespace quillow::pdf
