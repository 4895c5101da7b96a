// The parent's end of the connection to a worker. Nothing that the worker does or leaves undone makes a call wait past
// its deadline.
#pragma once

#include "posix/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillow::worker {

class Deadline {
public:
    /// A time of zero never ends.
    explicit Deadline(std::chrono::milliseconds time);
    explicit Deadline(std::chrono::steady_clock::time_point end)
        : end_(end) {}
    /// As poll(2) takes it: the milliseconds left, rounded up; -1 without an end.
    [[nodiscard]] int left() const;
    [[nodiscard]] bool isOver() const { return left() == 0; }

private:
    std::optional<std::chrono::steady_clock::time_point> end_;
};

/// What is on its way to a worker. The bytes belong to the caller.
struct Message {
    std::array<std::string_view, 3> parts; ///< one after another; what was sent is removed
    int descriptor = -1;                   ///< if not negative, it goes along with the first byte

    [[nodiscard]] bool isSent() const {
        return std::all_of(parts.begin(), parts.end(), [](std::string_view part) { return part.empty(); });
    }
};

class Channel {
public:
    enum class Result {
        done,
        late,      ///< the deadline has passed
        closed,    ///< the worker has closed its end, usually by ending
        unstarted, ///< the same, and it had not read all that was sent to it
    };
    enum class State { quiet, closed, talking };

    explicit Channel(FileDescriptor socket)
        : socket_(std::move(socket)) {}

    /// Sends what is left of the message.
    [[nodiscard]] Result send(Message& message, const Deadline& deadline);
    /// Fills the whole view.
    [[nodiscard]] Result receive(std::span<char> view, const Deadline& deadline);
    /// Appends `size` bytes. Memory is used for what arrives, not for what was promised.
    [[nodiscard]] Result receive(std::string& out, std::size_t size, const Deadline& deadline);
    /// Between two documents a worker is quiet. Does not wait.
    [[nodiscard]] State state() const;

private:
    [[nodiscard]] Result waitFor(short events, const Deadline& deadline) const;
    [[nodiscard]] Result receiveSome(std::span<char> view, std::size_t& received, const Deadline& deadline);

    FileDescriptor socket_;
    std::array<char, 32768> buffer_; ///< a short answer arrives in one piece
    std::size_t begin_ = 0;          ///< of the bytes in it that were not yet asked for
    std::size_t end_ = 0;
};

} // namespace quillow::worker
