// The engines in processes that are locked in: a hostile document harms nothing but itself.
#pragma once

#include "engines/Extract.h"
#include "worker/Pool.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace quillow {

class IsolatedEngine {
public:
    /// Uses the worker that belongs to the running program. The first document starts it, so that it does not delay the
    /// launch.
    IsolatedEngine();
    IsolatedEngine(std::optional<std::string> workerProgram, worker::Limits limits);

    /// Reads one document. May be called from several threads at once.
    ///
    /// deliberate: without a worker every document fails, and the reason says so. The engines never read a document in
    /// the program itself.
    [[nodiscard]] Extraction extract(std::span<const std::byte> bytes, DocumentKind kind);

    /// One line for the user about what protects the system from documents.
    [[nodiscard]] std::string isolationLine();

private:
    unsigned threads_ = 1;
    std::optional<worker::Pool> pool_;
};

} // namespace quillow
