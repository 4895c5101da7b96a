#include "platform/qt/life/SingleInstance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace quillow {
namespace {

using Clock = std::chrono::steady_clock;

constexpr char kTaken = '+'; ///< the reply to an accepted message
constexpr int kBacklog = 64;
/// A start sends its whole message right after it connects. A slow sender must not block others.
constexpr std::chrono::seconds kSenderPatience{2};
/// The pause between attempts. A first start opens its socket microseconds after it takes the lock.
constexpr std::chrono::milliseconds kBetweenAttempts{10};

/// Returns whether the descriptor becomes ready for reading or writing before the deadline.
bool waitFor(int descriptor, short events, Clock::time_point deadline, int stop = -1) {
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0) return false;
        pollfd watched[] = {{descriptor, events, 0}, {stop, POLLIN, 0}};
        const int count = ::poll(watched, 2, static_cast<int>(left.count()));
        if (count < 0 && errno == EINTR) continue;
        return count > 0 && watched[1].revents == 0;
    }
}

bool isOfThisUser(int connection) {
    ucred peer = {};
    socklen_t size = sizeof peer;
    return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

bool sendAll(int connection, const QByteArray& bytes, Clock::time_point deadline) {
    for (qsizetype sent = 0; sent < bytes.size();) {
        if (!waitFor(connection, POLLOUT, deadline)) return false;
        const ssize_t count = ::send(connection, bytes.constData() + sent,
                                     static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (count <= 0) return false;
        sent += count;
    }
    return true;
}

/// Everything that the peer sends until it has finished; std::nullopt if that is too much or takes too long.
std::optional<QByteArray> receiveAll(int connection, Clock::time_point deadline, int stop) {
    QByteArray message;
    char block[65536];
    while (waitFor(connection, POLLIN, deadline, stop)) {
        const ssize_t count = ::recv(connection, block, sizeof block, MSG_DONTWAIT);
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) return message;
        message.append(block, count);
        if (message.size() > kMaximumHandoverSize) return std::nullopt;
    }
    return std::nullopt;
}

void answer(int connection, int stop, const SingleInstance::Receiver& receiver) {
    if (!isOfThisUser(connection)) return;
    const auto message = receiveAll(connection, Clock::now() + kSenderPatience, stop);
    const auto handover = message ? decodedHandover(*message) : std::nullopt;
    if (!handover || !receiver(*handover)) return;
    [[maybe_unused]] const ssize_t sent = ::send(connection, &kTaken, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

/// Opens a folder that belongs to the user and that nobody else can access. For any other folder the descriptor is
/// not open.
FileDescriptor openPrivateFolder(const QByteArray& path) {
    if (!path.startsWith('/')) return {};
    FileDescriptor folder(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status = {};
    if (!folder.isOpen() || ::fstat(folder.number(), &status) != 0) return {};
    const bool isPrivate = status.st_uid == ::geteuid() && (status.st_mode & 077) == 0;
    return isPrivate ? std::move(folder) : FileDescriptor();
}

FileDescriptor makeSocket() {
    return FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

std::optional<sockaddr_un> addressOf(const QByteArray& path) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) return std::nullopt;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    return address;
}

} // namespace

SingleInstance::SingleInstance(const QByteArray& folder, const QByteArray& name)
    : name_("org.quillow.Quillow-" + name.toPercentEncoding("", "."))
    , folder_(openPrivateFolder(folder)) {}

SingleInstance::~SingleInstance() {
    if (server_.joinable()) {
        ::eventfd_write(stop_.number(), 1);
        server_.join();
    }
    // Before the lock is released: the next holder creates its own socket.
    if (listener_.isOpen()) ::unlink(pathOf(".socket").constData());
}

QByteArray SingleInstance::standardFolder() {
    QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty()) return runtime;
    QByteArray folder = "/tmp/org.quillow.Quillow-" + QByteArray::number(::geteuid());
    ::mkdir(folder.constData(), 0700); // another user's folder with that name is not used
    return folder;
}

SingleInstance::Role SingleInstance::begin(const Handover& handover, std::chrono::milliseconds patience) {
    if (!folder_.isOpen()) return Role::alone;
    const QByteArray message = encodedHandover(handover);
    const auto deadline = Clock::now() + patience;
    while (true) {
        if (takeLock()) return listen() ? Role::first : Role::alone;
        if (!lock_.isOpen()) return Role::alone;
        switch (deliver(message, deadline)) {
        case Delivery::delivered: return Role::handedOver;
        case Delivery::unanswered: return Role::unanswered;
        case Delivery::nobodyListens: break; // the holder is just starting, or ending
        }
        if (Clock::now() >= deadline) return Role::unanswered;
        std::this_thread::sleep_for(kBetweenAttempts);
    }
}

bool SingleInstance::takeLock() {
    if (!lock_.isOpen()) {
        const int file = ::open(pathOf(".lock").constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
        lock_ = FileDescriptor(file);
    }
    return lock_.isOpen() && ::flock(lock_.number(), LOCK_EX | LOCK_NB) == 0;
}

bool SingleInstance::listen() {
    const QByteArray path = pathOf(".socket");
    const auto address = addressOf(path);
    FileDescriptor listener = makeSocket();
    stop_ = FileDescriptor(::eventfd(0, EFD_CLOEXEC));
    if (!address || !listener.isOpen() || !stop_.isOpen()) return false;
    // This process holds the lock, so an existing socket is stale.
    ::unlink(path.constData());
    if (::bind(listener.number(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0) return false;
    listener_ = std::move(listener);
    return ::listen(listener_.number(), kBacklog) == 0;
}

SingleInstance::Delivery SingleInstance::deliver(const QByteArray& message, Clock::time_point deadline) const {
    const auto address = addressOf(pathOf(".socket"));
    const FileDescriptor connection = makeSocket();
    if (!address || !connection.isOpen()) return Delivery::unanswered;
    // O_NONBLOCK: if the listener does not accept connections, its queue may be full.
    ::fcntl(connection.number(), F_SETFL, O_NONBLOCK);
    if (::connect(connection.number(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0)
        return Delivery::nobodyListens;
    if (!isOfThisUser(connection.number())) return Delivery::unanswered;
    const bool isSent = sendAll(connection.number(), message, deadline);
    ::shutdown(connection.number(), SHUT_WR);
    if (!isSent || !waitFor(connection.number(), POLLIN, deadline))
        return Clock::now() >= deadline ? Delivery::unanswered : Delivery::nobodyListens;
    char reply = 0;
    // A connection that closes without a reply means that the other program is ending.
    return ::recv(connection.number(), &reply, 1, 0) == 1 && reply == kTaken ? Delivery::delivered
                                                                             : Delivery::nobodyListens;
}

void SingleInstance::serve(Receiver receiver) {
    if (!listener_.isOpen()) return;
    server_ = std::thread([listener = listener_.number(), stop = stop_.number(), receiver = std::move(receiver)] {
        while (true) {
            pollfd watched[] = {{listener, POLLIN, 0}, {stop, POLLIN, 0}};
            if (::poll(watched, 2, -1) < 0 && errno != EINTR) return;
            if (watched[1].revents != 0) return;
            if ((watched[0].revents & POLLIN) == 0) continue;
            const FileDescriptor connection(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
            if (connection.isOpen())
                answer(connection.number(), stop, receiver);
            else
                std::this_thread::sleep_for(kBetweenAttempts); // out of descriptors: try again when some are free
        }
    });
}

QByteArray SingleInstance::pathOf(const char* extension) const {
    return "/proc/self/fd/" + QByteArray::number(folder_.number()) + '/' + name_ + extension;
}

} // namespace quillow
