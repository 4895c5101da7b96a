// The parent's end of the connection to a worker. Nothing that the worker does or leaves undone makes a call wait past
// its deadline.
#pragma once

#include "posix/FileDescriptor.h"

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
    /// As poll(2) takes it: the milliseconds left, rounded up; -1 without an end.
    [[nodiscard]] int left() const;
    [[nodiscard]] bool isOver() const { return left() == 0; }

private:
    std::optional<std::chrono::steady_clock::time_point> end_;
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

    /// Sends the parts one after another. `descriptor`, if not negative, goes along with the first byte.
    [[nodiscard]] Result send(std::span<const std::string_view> parts, int descriptor, const Deadline& deadline);
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
