#include "worker/Channel.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

namespace quillow::worker {

namespace {

/// The piece by which a text grows. It fits in the processor's cache, so that it is cheap to fill it twice.
constexpr std::size_t kPiece = std::size_t{256} << 10;

/// Makes the descriptor part of the message.
void attach(msghdr& message, std::span<char> control, int descriptor) {
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof descriptor);
    std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
}

} // namespace

Deadline::Deadline(std::chrono::milliseconds time) {
    if (time.count() > 0) end_ = std::chrono::steady_clock::now() + time;
}

int Deadline::left() const {
    if (!end_) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*end_ - std::chrono::steady_clock::now()).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, INT_MAX));
}

Channel::Result Channel::waitFor(short events, const Deadline& deadline) const {
    for (;;) {
        const int left = deadline.left();
        pollfd waiting{socket_.number(), events, 0};
        const int ready = ::poll(&waiting, 1, left);
        if (ready > 0) return Result::done; // or an error, which the next call reports
        if (ready == 0 && left >= 0 && deadline.isOver()) return Result::late;
        if (ready < 0 && errno != EINTR && errno != EAGAIN) return Result::closed;
    }
}

Channel::Result Channel::send(Message& message, const Deadline& deadline) {
    for (;;) {
        std::array<iovec, std::tuple_size_v<decltype(message.parts)>> vectors{};
        std::size_t count = 0;
        for (const std::string_view part : message.parts)
            if (!part.empty()) vectors[count++] = {const_cast<char*>(part.data()), part.size()}; // NOLINT: only read
        if (count == 0) return Result::done;
        msghdr header{};
        header.msg_iov = vectors.data();
        header.msg_iovlen = count;
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof message.descriptor)] = {};
        if (message.descriptor >= 0) attach(header, control, message.descriptor);
        const ssize_t sent = ::sendmsg(socket_.number(), &header, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && errno == EINTR) continue;
        if (sent < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            if (const Result result = waitFor(POLLOUT, deadline); result != Result::done) return result;
            continue;
        }
        if (sent < 0) return Result::unstarted;
        message.descriptor = -1;
        auto left = static_cast<std::size_t>(sent);
        for (std::string_view& part : message.parts) {
            const std::size_t taken = std::min(left, part.size());
            part.remove_prefix(taken);
            left -= taken;
        }
        if (message.isSent()) return Result::done;
        if (deadline.isOver()) return Result::late;
    }
}

Channel::Result Channel::receiveSome(std::span<char> view, std::size_t& received, const Deadline& deadline) {
    for (;;) {
        const ssize_t got = ::recv(socket_.number(), view.data(), view.size(), MSG_DONTWAIT);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            if (const Result result = waitFor(POLLIN, deadline); result != Result::done) return result;
            continue;
        }
        // The kernel resets the connection when its other end is closed before everything was read there.
        if (got < 0) return errno == ECONNRESET ? Result::unstarted : Result::closed;
        if (got == 0) return Result::closed;
        if (deadline.isOver()) return Result::late; // a worker may send a byte from time to time
        received = static_cast<std::size_t>(got);
        return Result::done;
    }
}

Channel::Result Channel::receive(std::span<char> view, const Deadline& deadline) {
    while (!view.empty()) {
        if (begin_ == end_) {
            begin_ = end_ = 0;
            std::size_t received = 0;
            const bool isLong = view.size() >= buffer_.size();
            const Result result = receiveSome(isLong ? view : std::span<char>(buffer_), received, deadline);
            if (result != Result::done) return result;
            if (isLong) {
                view = view.subspan(received);
                continue;
            }
            end_ = received;
        }
        const std::size_t taken = std::min(view.size(), end_ - begin_);
        std::memcpy(view.data(), buffer_.data() + begin_, taken);
        begin_ += taken;
        view = view.subspan(taken);
    }
    return Result::done;
}

Channel::Result Channel::receive(std::string& out, std::size_t size, const Deadline& deadline) {
    out.reserve(out.size() + size); // addresses only: the system gives memory when it is written
    while (size > 0) {
        const std::size_t piece = std::min(size, kPiece);
        const std::size_t at = out.size();
        out.resize(at + piece);
        if (const Result result = receive(std::span<char>(out).subspan(at), deadline); result != Result::done)
            return result;
        size -= piece;
    }
    return Result::done;
}

Channel::State Channel::state() const {
    if (begin_ != end_) return State::talking;
    char byte = 0;
    const ssize_t got = ::recv(socket_.number(), &byte, 1, MSG_DONTWAIT | MSG_PEEK);
    if (got > 0) return State::talking;
    return got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) ? State::quiet : State::closed;
}

} // namespace quillow::worker
