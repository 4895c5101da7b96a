#include "worker/Pool.h"

#include "worker/Child.h"
#include "worker/Queue.h"

#include <algorithm>
#include <utility>

namespace quillow::worker {

namespace {

/// A worker greets within a millisecond; a busy machine may take longer.
constexpr std::chrono::seconds kPatienceForGreeting{10};

/// PDFs of as many pages as two threads need are larger.
constexpr std::size_t kLongPdf = std::size_t{128} << 10;

} // namespace

unsigned usefulThreads(DocumentKind kind, std::size_t size, unsigned threads) {
    return kind == DocumentKind::pdf && size >= kLongPdf ? threads : 1;
}

Pool::Pool(WorkerProgram program, Limits limits, LandlockUse landlock)
    : limits_(limits)
    , landlock_(landlock)
    , spawner_(std::move(program)) {}

unsigned Pool::allowedThreads(unsigned wanted) const {
    const std::size_t most = limits_.memory > 0 ? limits_.memory / kAddressesOfAThread : kMaximumThreads;
    const unsigned allowed = std::min({wanted, limits_.threads, kMaximumThreads});
    return static_cast<unsigned>(std::clamp<std::size_t>(allowed, 1, std::max<std::size_t>(most, 1)));
}

Pool::Start Pool::start(unsigned threads) {
    return {spawner_.start(wordsOf({limits_.memory, processorTime(limits_), threads, landlock_})), threads};
}

void Pool::prepare(unsigned threads) {
    Start started = start(allowedThreads(threads));
    const std::lock_guard lock(mutex_);
    starting_.push_back(std::move(started));
}

/// The worker that was used last and has enough threads. The mutex must be locked.
std::unique_ptr<Worker> Pool::takeIdle(unsigned threads) {
    for (auto at = idle_.end(); at != idle_.begin();) {
        --at;
        if ((*at)->threads() < threads) continue;
        std::unique_ptr<Worker> worker = std::move(*at);
        at = idle_.erase(at);
        if (worker->isReady()) return worker;
    }
    return nullptr;
}

Pool::NewWorker Pool::take(Take which, unsigned threads) {
    std::optional<Start> starting;
    {
        const std::lock_guard lock(mutex_);
        if (which == Take::any)
            if (auto worker = takeIdle(threads)) return worker;
        const auto enough = std::find_if(starting_.begin(), starting_.end(),
                                         [threads](const Start& start) { return start.threads >= threads; });
        if (enough != starting_.end()) {
            starting = std::move(*enough);
            starting_.erase(enough);
        }
    }
    if (!starting) starting = start(threads);
    Spawner::Started started = starting->future.get();
    if (auto* const why = std::get_if<std::string>(&started)) return std::move(*why);
    return std::make_unique<Worker>(std::move(std::get<StartedProcess>(started)), starting->threads);
}

void Pool::giveBack(std::unique_ptr<Worker> worker) {
    const std::lock_guard lock(mutex_);
    idle_.push_back(std::move(worker));
}

Extraction Pool::read(const Document& document, const Question& question) {
    Queue queue(*this);
    queue.give(document, question);
    return queue.take();
}

std::variant<Isolation, std::string> Pool::isolation() {
    NewWorker taken = take(Take::any, 1);
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
