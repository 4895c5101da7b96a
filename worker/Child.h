// The worker's side: a process that locks itself in and reads one document after another.
#pragma once

#include "engines/Extract.h"
#include "worker/Lock.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace quillow::worker {

/// Reads one document, as extract() does.
using Engine = std::function<Extraction(std::span<const std::byte> bytes, DocumentKind kind, const Options& options,
                                        const BytesDone& bytesDone)>;

/// The words after the program's name with which a worker is started.
[[nodiscard]] std::vector<std::string> wordsOf(const LockSettings& settings);

/// The main function of a worker: standard input is its channel. `prepare` runs before the lock; what needs a file,
/// such as loading a library, belongs there. Returns when the parent closes the channel.
[[nodiscard]] int serveDocuments(std::span<const char* const> words, const std::function<void()>& prepare,
                                 const Engine& engine);

} // namespace quillow::worker
