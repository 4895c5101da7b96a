// One running program for each user and display. The first start holds a lock and listens on a socket; a second one
// hands its message over and ends. The lock, not the socket, decides who is first, and the kernel releases it when
// its holder dies. So the remains of a killed program block nobody, and of simultaneous starts exactly one wins.
#pragma once

#include "platform/qt/life/HandoverMessage.h"
#include "posix/FileDescriptor.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <optional>
#include <thread>

namespace quillow {

class SingleInstance {
public:
    enum class Role {
        first,      ///< this process runs and takes the messages of later starts
        handedOver, ///< another process runs and has the handover
        unanswered, ///< another process runs and does not reply, for example because it is stopped
        alone,      ///< there is no private folder: this process runs, and later starts do not find it
    };

    /// `folder` holds the lock and the socket. It is used only if it belongs to the user and nobody else can access
    /// it. `name` identifies the display and becomes part of the two file names.
    SingleInstance(const QByteArray& folder, const QByteArray& name);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    /// Determines this process's role. Returns at once, except that it waits for another process's reply for up to
    /// `patience`.
    [[nodiscard]] Role begin(const Handover& handover, std::chrono::milliseconds patience);

    /// Returns true if it accepts the handover. The sender waits for the result, so the receiver must not wait for
    /// work to end.
    using Receiver = std::function<bool(const Handover& handover)>;

    /// For Role::first: calls the receiver with each handover, on a separate thread, until this object is destroyed. A
    /// start whose handover was refused becomes the first as soon as this process has ended. Messages of other users,
    /// messages over the size limit and malformed messages never reach the receiver.
    void serve(Receiver receiver);

    /// The folder for the session's sockets: $XDG_RUNTIME_DIR, else a folder in /tmp, which is created.
    [[nodiscard]] static QByteArray standardFolder();

private:
    enum class Delivery { delivered, nobodyListens, unanswered };

    [[nodiscard]] bool takeLock();
    [[nodiscard]] bool listen();
    [[nodiscard]] Delivery deliver(const QByteArray& message, std::chrono::steady_clock::time_point deadline) const;
    /// The file's path through the open folder's descriptor: a socket's path may have at most 107 bytes, and the
    /// folder's path may be longer.
    [[nodiscard]] QByteArray pathOf(const char* extension) const;

    QByteArray name_;
    FileDescriptor folder_;
    FileDescriptor lock_;
    FileDescriptor listener_;
    FileDescriptor stop_; ///< an eventfd; signalled to end the thread
    std::thread server_;
};

} // namespace quillow
