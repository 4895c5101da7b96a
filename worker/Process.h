// A worker's process as its parent sees it: started, ended, and how it ended.
#pragma once

#include "posix/FileDescriptor.h"

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillow::worker {

/// The executable that becomes a worker.
struct WorkerProgram {
    std::string path;
    std::vector<std::string> words = {}; ///< arguments before those of the limits
};

/// Owns a child process: ends it and waits for it.
class Process {
public:
    explicit Process(pid_t number)
        : number_(number) {}
    Process(Process&& other) noexcept
        : number_(std::exchange(other.number_, -1)) {}
    Process& operator=(Process&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Process() { end(); }

    [[nodiscard]] pid_t number() const { return number_; }
    /// Kills the process and waits for its end.
    void end();
    /// How a process ended that has closed its channel, as waitpid(2) states it. It gets a moment for its end; one that
    /// goes on is killed. std::nullopt if the system did not keep it.
    [[nodiscard]] std::optional<int> status();

private:
    pid_t number_;
};

/// A worker has two channels, standard input and standard output, and its documents come over them in turn. Thus the
/// next document can wait in the one while the worker reads a document of the other, and how a channel ends tells
/// whether the worker had begun with the document in it.
inline constexpr std::size_t kChannels = 2;

struct StartedProcess {
    Process process;
    std::array<FileDescriptor, kChannels> channels;
};

/// Starts the program with the words. It gets no environment, no signals that
/// are blocked or ignored here, and a process group of its own, so that Ctrl-C reaches only the parent. Returns the
/// system's message on failure.
[[nodiscard]] std::variant<StartedProcess, std::string> startProcess(const WorkerProgram& program,
                                                                     const std::vector<std::string>& words);

} // namespace quillow::worker
