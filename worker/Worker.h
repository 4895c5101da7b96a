// One worker from the parent's side. It reads documents one after another; the next one may be sent before the answer
// to the last one is there, so that neither side waits for the other between two documents.
#pragma once

#include "worker/Channel.h"
#include "worker/Isolation.h"
#include "worker/Limits.h"
#include "worker/Process.h"
#include "worker/Question.h"
#include "worker/Wire.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <span>
#include <string>

namespace quillow::worker {

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
        , channels_{Channel(std::move(started.channels[0])), Channel(std::move(started.channels[1]))}
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

    /// The most documents that are sent to a worker and not yet received: one that it reads and one that waits.
    static constexpr std::size_t kMostSent = kChannels;

    /// Sends a document, whose bytes must stay until its outcome is received. Waits for the worker only if no other
    /// document is on its way.
    void send(const Document& document, const Question& question, const Limits& limits);
    /// The outcome of the document that was sent first. The reasons `timeout` and `crashed` tell what happened to the
    /// worker. Unless the worker is usable afterwards, it has not begun with the document that waits. The time of a
    /// document counts from when the answer to the one before it has arrived.
    [[nodiscard]] Outcome receive(const Limits& limits);
    [[nodiscard]] Outcome read(const Document& document, const Question& question, const Limits& limits) {
        send(document, question, limits);
        return receive(limits);
    }
    /// What protects the system from this worker; std::nullopt if it does not say.
    [[nodiscard]] std::optional<Isolation> isolation(const Deadline& deadline);

    /// While no document is on its way: false if the worker has ended or says something that nobody asked for.
    [[nodiscard]] bool isReady() const;
    /// True if the worker has got as many documents as it may.
    [[nodiscard]] bool isFull() const;
    /// True if the worker has read for so long that another one should read what it has not begun.
    [[nodiscard]] bool isWornOut(const Limits& limits) const;
    [[nodiscard]] pid_t process() const { return process_.number(); }
    [[nodiscard]] unsigned threads() const { return threads_; }

private:
    /// A document on its way.
    struct Sent {
        Request request;
        std::optional<std::string> body = {}; ///< std::nullopt: the options are too long, and nothing was sent
        EncodedSizes sizes = {};
        Message message = {}; ///< the rest that is still to be sent
        std::size_t channel = 0;
        Channel::Result result = Channel::Result::done;
        std::chrono::steady_clock::time_point begun = {};
    };

    [[nodiscard]] Channel::Result receiveGreeting(const Deadline& deadline);
    [[nodiscard]] Outcome receiveFirst(const Limits& limits);
    [[nodiscard]] Outcome receiveAnswer(const Sent& sent, const Limits& limits, const Deadline& deadline);
    [[nodiscard]] Outcome invalidAnswer() const;
    [[nodiscard]] Outcome brokenOff(Channel::Result result, const Limits& limits, bool hasFile);

    Process process_;
    std::array<Channel, kChannels> channels_;
    unsigned threads_;
    std::optional<Isolation> isolation_;
    std::deque<Sent> sent_;
    unsigned sentInAll_ = 0;
    unsigned documents_ = 0; ///< received
    std::chrono::steady_clock::duration used_{};
};

/// A worker reads at most so many documents, so that one that a document has taken over without a trace does not meet
/// all later ones. A start in a thousand costs 1 µs a document.
inline constexpr unsigned kDocumentsPerWorker = 1000;

/// The processor time after which the system ends a worker, in seconds. The wall clock of its parent comes first.
[[nodiscard]] unsigned processorTime(const Limits& limits);

} // namespace quillow::worker
