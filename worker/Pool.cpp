#include "worker/Pool.h"

#include "worker/Child.h"

#include <algorithm>
#include <utility>

namespace quillow::worker {

namespace {

/// A worker greets within a millisecond; a busy machine may take longer.
constexpr std::chrono::seconds kPatienceForGreeting{10};

Extraction notStarted(const std::string& why) {
    return failed(Reason::unreadable, "no process can be started to read it: " + why);
}

unsigned threadsOf(const Limits& limits) {
    const std::size_t most = limits.memory > 0 ? limits.memory / kAddressesOfAThread : kMaximumThreads;
    return static_cast<unsigned>(std::clamp<std::size_t>(most, 1, std::clamp(limits.threads, 1U, kMaximumThreads)));
}

LockSettings lockSettings(const Limits& limits, LandlockUse landlock) {
    return {limits.memory, processorTime(limits), threadsOf(limits), landlock};
}

} // namespace

Pool::Pool(WorkerProgram program, Limits limits, LandlockUse landlock)
    : limits_(limits)
    , spawner_(std::move(program), wordsOf(lockSettings(limits, landlock))) {}

void Pool::prepare() {
    auto started = spawner_.start();
    const std::lock_guard lock(mutex_);
    starting_.push_back(std::move(started));
}

Pool::NewWorker Pool::take(Take which) {
    std::future<Spawner::Started> future;
    {
        const std::lock_guard lock(mutex_);
        while (which == Take::any && !idle_.empty()) {
            std::unique_ptr<Worker> worker = std::move(idle_.back());
            idle_.pop_back();
            if (worker->isReady()) return worker;
        }
        if (!starting_.empty()) {
            future = std::move(starting_.back());
            starting_.pop_back();
        }
    }
    if (!future.valid()) future = spawner_.start();
    Spawner::Started started = future.get();
    if (auto* const why = std::get_if<std::string>(&started)) return std::move(*why);
    return std::make_unique<Worker>(std::move(std::get<StartedProcess>(started)));
}

void Pool::giveBack(std::unique_ptr<Worker> worker) {
    const std::lock_guard lock(mutex_);
    idle_.push_back(std::move(worker));
}

Extraction Pool::read(const Document& document, DocumentKind kind, const Options& options) {
    return ask(document, {kind, options});
}

Extraction Pool::explain(const Document& document, DocumentKind kind, std::size_t page, const Options& options) {
    return ask(document, {kind, options, page});
}

Extraction Pool::ask(const Document& document, const Question& question) {
    // A worker that was killed while idle, or that an earlier document spoiled, does not count against the document.
    for (const Take which : {Take::any, Take::unused}) {
        NewWorker taken = take(which);
        if (const auto* const why = std::get_if<std::string>(&taken)) return notStarted(*why);
        auto& worker = std::get<std::unique_ptr<Worker>>(taken);
        Worker::Outcome outcome = worker->read(document, question, limits_);
        if (outcome.fate == Worker::Fate::unbegun) continue;
        if (outcome.fate == Worker::Fate::usable && !worker->isWornOut(limits_)) giveBack(std::move(worker));
        return std::move(outcome.extraction);
    }
    return notStarted("it ends before it begins");
}

std::variant<Isolation, std::string> Pool::isolation() {
    NewWorker taken = take(Take::any);
    if (auto* const why = std::get_if<std::string>(&taken)) return std::move(*why);
    auto& worker = std::get<std::unique_ptr<Worker>>(taken);
    const auto isolation = worker->isolation(Deadline(kPatienceForGreeting));
    if (!isolation) return "it ends before it begins";
    giveBack(std::move(worker));
    return *isolation;
}

std::vector<pid_t> Pool::idleWorkers() {
    const std::lock_guard lock(mutex_);
    std::vector<pid_t> processes;
    for (const auto& worker : idle_)
        processes.push_back(worker->process());
    return processes;
}

} // namespace quillow::worker
