// One worker from the parent's side. It reads documents one after another.
#pragma once

#include "worker/Channel.h"
#include "worker/Isolation.h"
#include "worker/Limits.h"
#include "worker/Process.h"
#include "worker/Question.h"

#include <cstddef>
#include <optional>
#include <span>

namespace quillow::worker {

struct Request;

/// A document on its way to a worker.
struct Document {
    std::span<const std::byte> bytes = {}; ///< in memory
    int descriptor = -1;                   ///< or, if not negative, a file that is open for reading only,
    std::size_t size = 0;                  ///< and its size, which is not zero
};

class Worker {
public:
    /// `threads` are those that the process was started with.
    explicit Worker(StartedProcess started, unsigned threads = 1)
        : process_(std::move(started.process))
        , channel_(std::move(started.channel))
        , threads_(threads) {}

    enum class Fate {
        usable,  ///< the worker takes the next document
        ended,   ///< the outcome holds, but the worker is of no more use
        unbegun, ///< the worker is of no use, and not by this document's fault: a new worker may read it
    };
    struct Outcome {
        Fate fate;
        Extraction extraction;
    };

    /// Reads a document. The reasons `timeout` and `crashed` tell what happened to the worker.
    [[nodiscard]] Outcome read(const Document& document, const Question& question, const Limits& limits);
    /// What protects the system from this worker; std::nullopt if it does not say.
    [[nodiscard]] std::optional<Isolation> isolation(const Deadline& deadline);

    /// Between two documents: false if the worker has ended or says something that nobody asked for.
    [[nodiscard]] bool isReady() const { return channel_.state() == Channel::State::quiet; }
    /// True if the worker has read so many documents, or for so long, that a new one should take its place.
    [[nodiscard]] bool isWornOut(const Limits& limits) const;
    [[nodiscard]] pid_t process() const { return process_.number(); }
    [[nodiscard]] unsigned threads() const { return threads_; }

private:
    [[nodiscard]] Channel::Result receiveGreeting(const Deadline& deadline);
    [[nodiscard]] Outcome receiveAnswer(const Request& request, const Limits& limits, const Deadline& deadline);
    [[nodiscard]] Outcome invalidAnswer() const;
    [[nodiscard]] Outcome brokenOff(Channel::Result result, const Limits& limits, bool hasFile);

    Process process_;
    Channel channel_;
    unsigned threads_;
    std::optional<Isolation> isolation_;
    unsigned documents_ = 0;
    std::chrono::steady_clock::duration used_{};
};

/// A worker reads at most so many documents, so that one that a document has taken over without a trace does not meet
/// all later ones. A start in a thousand costs 1 µs a document.
inline constexpr unsigned kDocumentsPerWorker = 1000;

/// The processor time after which the system ends a worker, in seconds. The wall clock of its parent comes first.
[[nodiscard]] unsigned processorTime(const Limits& limits);

} // namespace quillow::worker
