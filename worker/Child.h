// The worker's side: a process that locks itself in and reads one document after another.
#pragma once

#include "engines/DocumentKind.h"
#include "engines/Extraction.h"
#include "worker/Lock.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace quillow::worker {

/// What the worker does with a document.
struct Engine {
    using Bytes = std::span<const std::byte>;
    std::function<Extraction(Bytes bytes, DocumentKind kind, const Options& options, const BytesDone& bytesDone)>
        extract;
    std::function<Extraction(Bytes bytes, DocumentKind kind, std::size_t page, const Options& options)> explain;
};

/// The words after the program's name with which a worker is started.
[[nodiscard]] std::vector<std::string> wordsOf(const LockSettings& settings);

/// The main function of a worker: standard input and output are its channels. `prepare` runs before the lock; what
/// needs a file, such as loading a library, belongs there. Returns when the parent closes a channel.
[[nodiscard]] int serveDocuments(std::span<const char* const> words, const std::function<void()>& prepare,
                                 const Engine& engine);

} // namespace quillow::worker
