#include "worker/Queue.h"

#include <cassert>
#include <new>
#include <utility>

namespace quillow::worker {

namespace {

Extraction notStarted(const std::string& why) {
    return failed(Reason::unreadable, "no process can be started to read it: " + why);
}

} // namespace

Queue::~Queue() {
    // A worker that still reads is of no use to anyone else.
    if (given_.empty()) giveBackWorker();
}

unsigned Queue::threadsFor(const Given& given) const {
    return pool_.allowedThreads(given.question.options.threads);
}

void Queue::giveBackWorker() {
    if (worker_ && !worker_->isFull()) pool_.giveBack(std::move(worker_));
    worker_.reset();
}

/// Ends the worker. Another one reads what it has not begun.
void Queue::dropWorker() {
    worker_.reset();
    for (Given& given : given_)
        given.isSent = false;
}

/// Why there is no worker for it; std::nullopt if it is sent.
std::optional<std::string> Queue::sendFirst(Pool::Take which) {
    Given& first = given_.front();
    const unsigned threads = threadsFor(first);
    if (worker_ && (worker_->isFull() || worker_->threads() < threads)) giveBackWorker();
    if (worker_ && (which == Pool::Take::unused || !worker_->isReady())) worker_.reset();
    if (!worker_) {
        Pool::NewWorker taken = pool_.take(which, threads);
        if (auto* const why = std::get_if<std::string>(&taken)) return std::move(*why);
        worker_ = std::move(std::get<std::unique_ptr<Worker>>(taken));
    }
    worker_->send(first.document, first.question, pool_.limits_);
    first.isSent = true;
    return std::nullopt;
}

/// Sends the documents behind the first one, as far as the worker is one for them.
void Queue::sendNext() {
    for (Given& given : given_) {
        if (given.isSent) continue;
        if (worker_->isFull() || worker_->threads() < threadsFor(given)) return;
        worker_->send(given.document, given.question, pool_.limits_);
        given.isSent = true;
    }
}

void Queue::give(const Document& document, const Question& question) {
    assert(given_.size() < kMost);
    given_.push_back({document, question});
    send();
}

/// Sends what can be sent. What fails now is tried again when the outcome is taken.
void Queue::send() {
    try {
        if (!given_.empty() && !given_.front().isSent) static_cast<void>(sendFirst(Pool::Take::any));
        if (worker_) sendNext();
    } catch (const std::bad_alloc&) {
        dropWorker();
    }
}

Extraction Queue::take() {
    try {
        return receive();
    } catch (...) {
        given_.pop_front();
        dropWorker();
        throw;
    }
}

Extraction Queue::receive() {
    // A worker that was killed while idle, or that an earlier document spoiled, does not count against the document.
    for (const Pool::Take which : {Pool::Take::any, Pool::Take::unused}) {
        if (!given_.front().isSent)
            if (const auto why = sendFirst(which)) {
                given_.pop_front();
                return notStarted(*why);
            }
        sendNext();
        Worker::Outcome outcome = worker_->receive(pool_.limits_);
        if (outcome.fate == Worker::Fate::unbegun) {
            dropWorker();
            continue;
        }
        given_.pop_front();
        if (outcome.fate == Worker::Fate::ended || worker_->isWornOut(pool_.limits_)) dropWorker();
        send();
        return std::move(outcome.extraction);
    }
    given_.pop_front();
    return notStarted("it ends before it begins");
}

} // namespace quillow::worker
