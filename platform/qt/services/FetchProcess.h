// Downloads in a process of their own, quillow-fetch. The network's and the encryption's libraries are a fifth of what
// the program would need at rest, for one download a day.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <mutex>
#include <optional>
#include <set>

class QEventLoop;
class QUrl;

namespace quillow {

/// Must outlive the threads that download through it. Construct it on the main thread, after the application.
class FetchProcess final : public QObject {
public:
    explicit FetchProcess(QString program);
    /// quillow-fetch beside the running program or in its folder of helper programs.
    [[nodiscard]] static QString standardProgram();

    /// The bytes that the process writes. Returns std::nullopt if it cannot be started or fails, and when this program
    /// is about to quit: a running process is then ended at once.
    [[nodiscard]] std::optional<QByteArray> operator()(const QUrl& url) const;

private:
    /// Runs the loop unless the program is about to quit.
    void run(QEventLoop& loop) const;
    [[nodiscard]] bool isStopping() const;
    void stop();

    const QString program_;
    mutable std::mutex mutex_;
    mutable std::set<QEventLoop*> running_; ///< guarded by mutex_
    bool isStopping_ = false;               ///< guarded by mutex_
};

} // namespace quillow
