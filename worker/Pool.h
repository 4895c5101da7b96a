// Reads documents in workers: processes that are locked in, so that a document can harm nothing but itself. The door
// for programs.
#pragma once

#include "worker/Lock.h"
#include "worker/Spawner.h"
#include "worker/Worker.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillow::worker {

/// How many of the threads are of use for a document of this size. Only a PDF of many pages gains by several, and a
/// worker that has them takes longer to start.
[[nodiscard]] unsigned usefulThreads(DocumentKind kind, std::size_t size, unsigned threads);

class Pool {
public:
    /// `landlock` is off only in tests of systems without it.
    explicit Pool(WorkerProgram program, Limits limits = {}, LandlockUse landlock = LandlockUse::whereAvailable);

    /// Begins the start of a worker with so many threads, so that it is ready when the first document is. Does not
    /// wait.
    void prepare(unsigned threads = 1);

    /// Reads one document as extract() does, but survives what it does to its worker: the reason is then `timeout`,
    /// `crashed` or `outOfMemory`, or `unreadable` if no worker can be started. May be called from several threads at
    /// once; each has a worker of its own meanwhile, with as many threads as the options want and the limits allow.
    /// Throws std::bad_alloc if there is no memory for the text.
    [[nodiscard]] Extraction read(const Document& document, const Question& question);
    [[nodiscard]] Extraction read(const Document& document, DocumentKind kind, const Options& options = {}) {
        return read(document, Question{kind, options});
    }

    /// What protects the system from the workers, or why no worker can be started.
    [[nodiscard]] std::variant<Isolation, std::string> isolation();

    /// The processes of the workers that wait for a document.
    [[nodiscard]] std::vector<pid_t> idleWorkers();

private:
    friend class Queue;
    using NewWorker = std::variant<std::unique_ptr<Worker>, std::string>;
    enum class Take { any, unused };
    [[nodiscard]] NewWorker take(Take which, unsigned threads);
    [[nodiscard]] unsigned allowedThreads(unsigned wanted) const;
    struct Start {
        std::future<Spawner::Started> future;
        unsigned threads;
    };
    [[nodiscard]] Start start(unsigned threads);
    [[nodiscard]] std::unique_ptr<Worker> takeIdle(unsigned threads);
    void giveBack(std::unique_ptr<Worker> worker);

    const Limits limits_;
    const LandlockUse landlock_;
    Spawner spawner_; // outlives the workers
    std::mutex mutex_;
    std::vector<std::unique_ptr<Worker>> idle_;
    std::vector<Start> starting_;
};

} // namespace quillow::worker
