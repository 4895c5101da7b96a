#include "platform/engine/IsolatedEngine.h"

#include "worker/Program.h"

#include <algorithm>
#include <thread>
#include <utility>
#include <variant>

namespace quillow {
namespace {

constexpr const char* kNoProgram = "quillow-worker is not found";

/// The window converts one document at a time.
worker::Limits allCores() {
    worker::Limits limits;
    limits.threads = std::max(std::thread::hardware_concurrency(), 1U);
    return limits;
}

} // namespace

IsolatedEngine::IsolatedEngine()
    : IsolatedEngine(worker::findWorkerProgram(), allCores()) {}

IsolatedEngine::IsolatedEngine(std::optional<std::string> workerProgram, worker::Limits limits) {
    threads_ = limits.threads;
    if (workerProgram) pool_.emplace(worker::WorkerProgram{std::move(*workerProgram)}, limits);
}

Extraction IsolatedEngine::extract(std::span<const std::byte> bytes, DocumentKind kind) {
    if (!pool_) return failed(Reason::unreadable, kNoProgram);
    Options options;
    options.threads = worker::usefulThreads(kind, bytes.size(), threads_);
    return pool_->read({bytes}, kind, options);
}

std::string IsolatedEngine::isolationLine() {
    if (!pool_) return std::string("Documents cannot be read: ") + kNoProgram + ".";
    const auto isolation = pool_->isolation();
    if (const auto* const why = std::get_if<std::string>(&isolation))
        return "Documents cannot be read, because no process can be started for them: " + *why + ".";
    return "Documents are isolated from: " + worker::describe(std::get<worker::Isolation>(isolation)) + ".";
}

} // namespace quillow
