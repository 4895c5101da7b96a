// Downloads of a small file over HTTP and HTTPS.
#pragma once

#include "platform/qt/services/QtPropertyListLoader.h"

#include <QByteArray>
#include <QObject>

#include <mutex>
#include <optional>
#include <set>

class QEventLoop;
class QUrl;

namespace quillow {

/// Must outlive the threads that download through it. Construct it on the main thread, after the application.
class HttpDownload final : public QObject {
public:
    explicit HttpDownload(int timeoutMilliseconds = kPropertyListTimeout);

    /// The file's bytes. Returns std::nullopt for an unsuccessful status, an encryption error, more bytes than the
    /// limit, too many redirects, a redirect from HTTPS to HTTP, and when the program is about to quit. A running
    /// download then ends at once. The request has nothing that identifies the user: no cookies, no languages, and in
    /// the user agent the program's release only.
    [[nodiscard]] std::optional<QByteArray> operator()(const QUrl& url) const;

private:
    /// Runs the loop unless the program is about to quit.
    void run(QEventLoop& loop) const;
    [[nodiscard]] bool isStopping() const;
    void stop();

    int timeoutMilliseconds_;
    mutable std::mutex mutex_;
    mutable std::set<QEventLoop*> running_; ///< guarded by mutex_
    bool isStopping_ = false;               ///< guarded by mutex_
};

} // namespace quillow
