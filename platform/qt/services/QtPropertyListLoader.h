// Property lists over HTTP and HTTPS.
#pragma once

#include "platform/PropertyListLoader.h"

#include <QByteArray>
#include <QObject>

#include <mutex>
#include <set>

class QEventLoop;
class QUrl;

namespace quillow {

/// What a mirror may send at most, in bytes; a release-information list takes a few hundred.
inline constexpr qint64 kPropertyListDownloadLimit = qint64{64} * 1024;
/// How long one mirror may take, in milliseconds, name look-up and redirects included.
inline constexpr int kPropertyListTimeout = 10'000;

/// Outlives the threads that load through it; made on the main thread, after the application.
class QtPropertyListLoader final : public QObject, public PropertyListLoader {
public:
    explicit QtPropertyListLoader(int timeoutMilliseconds = kPropertyListTimeout);

    /// Nothing also for a URL that is not of the web, an answer that is no success, an encryption error, more bytes than the
    /// limit, too many redirects or one to plain HTTP from HTTPS, and once the program is about to quit: a download that
    /// runs then ends at once.
    [[nodiscard]] std::optional<Boxed::Dictionary> dictionaryWithContentsOfURL(const QString& url) const override;

private:
    [[nodiscard]] std::optional<QByteArray> download(const QUrl& url) const;
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
