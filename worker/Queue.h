// Documents that one thread has read in workers, one after another. The next document may be given before the outcome
// of the last one is taken, and then waits in the worker that reads the last one: the worker goes on at once, while the
// caller looks at what it has. A worker that ends costs only the document that it was reading.
#pragma once

#include "worker/Pool.h"

#include <deque>
#include <memory>
#include <optional>

namespace quillow::worker {

class Queue {
public:
    /// The pool must outlive the queue.
    explicit Queue(Pool& pool)
        : pool_(pool) {}
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;
    ~Queue();

    /// The most documents that are given and not yet taken.
    static constexpr std::size_t kMost = Worker::kMostSent;

    /// Gives a document, whose bytes must stay until its outcome is taken. Waits for a worker if no other document is
    /// on its way.
    void give(const Document& document, const Question& question);
    /// The outcome of the document that was given first, as Pool::read() returns it.
    [[nodiscard]] Extraction take();

private:
    struct Given {
        Document document;
        Question question;
        bool isSent = false;
    };

    [[nodiscard]] unsigned threadsFor(const Given& given) const;
    [[nodiscard]] std::optional<std::string> sendFirst(Pool::Take which);
    void sendNext();
    void send();
    [[nodiscard]] Extraction receive();
    void dropWorker();
    void giveBackWorker();

    Pool& pool_;
    std::unique_ptr<Worker> worker_;
    std::deque<Given> given_;
};

} // namespace quillow::worker
