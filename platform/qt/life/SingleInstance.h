// One running program for each user and display. The first start holds a lock and listens on a socket; a second one hands its
// message over and ends. A lock that dies with its holder, not the socket, says who is first: what a killed program leaves
// behind is in nobody's way, and of starts at the same instant exactly one wins.
#pragma once

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
        first,      ///< this one is to run and takes what later ones hand over
        handedOver, ///< another one runs and has the message
        unanswered, ///< another one runs and does not answer, as a stopped process
        alone,      ///< no private folder to meet in: this one is to run, and later ones do not find it
    };

    /// `folder` is where starts meet, used only when it is the user's own and closed to all others; `name` tells displays
    /// apart and becomes part of two file names there.
    SingleInstance(const QByteArray& folder, const QByteArray& name);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    /// Settles who runs. Returns at once, except that another one may take until `patience` to answer.
    [[nodiscard]] Role begin(const QByteArray& message, std::chrono::milliseconds patience);

    /// True when the message was taken. The sender waits for the answer, so it must not wait for work to end.
    using Receiver = std::function<bool(const QByteArray& message)>;

    /// As the first: calls the receiver with each message, on a thread of its own, until this object goes. A start whose
    /// message was not taken becomes the first as soon as this one has ended. Messages of other users, messages over the size
    /// limit and those that are none never reach the receiver.
    void serve(Receiver receiver);

    /// The folder of the session's sockets, made when it is the fallback: $XDG_RUNTIME_DIR, else one in /tmp.
    [[nodiscard]] static QByteArray standardFolder();

private:
    enum class Delivery { delivered, nobodyListens, unanswered };

    [[nodiscard]] bool takeLock();
    [[nodiscard]] bool listen();
    [[nodiscard]] Delivery deliver(const QByteArray& message, std::chrono::steady_clock::time_point deadline) const;
    /// The file's path through the open folder: a socket's path may have 107 bytes at most, whatever the folder's is.
    [[nodiscard]] QByteArray pathOf(const char* extension) const;

    QByteArray name_;
    FileDescriptor folder_;
    FileDescriptor lock_;
    FileDescriptor listener_;
    FileDescriptor stop_; ///< an event counter; raised to end the thread
    std::thread server_;
};

} // namespace quillow
