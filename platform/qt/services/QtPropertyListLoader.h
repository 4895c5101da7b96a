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

/// The maximum size of a download, in bytes. A release-information list has a few hundred.
inline constexpr qint64 kPropertyListDownloadLimit = qint64{64} * 1024;
/// The timeout for one mirror, in milliseconds, including name lookup and redirects.
inline constexpr int kPropertyListTimeout = 10'000;

/// Must outlive the threads that load through it. Construct it on the main thread, after the application.
class QtPropertyListLoader final : public QObject, public PropertyListLoader {
public:
    /// With an Ed25519 public key, a list counts only if the file beside it, of the same name with ".sig" added, holds
    /// the 64 bytes of its signature. Without a key every list counts.
    explicit QtPropertyListLoader(int timeoutMilliseconds = kPropertyListTimeout, QByteArray publicKey = {});

    /// Also returns std::nullopt for a URL that is not HTTP or HTTPS, an unsuccessful status, an encryption error,
    /// more bytes than the limit, too many redirects, a redirect from HTTPS to HTTP, and when the program is about to
    /// quit. A running download then ends at once. The request has nothing that identifies the user: no cookies, no
    /// languages, and in the user agent the program's release only.
    [[nodiscard]] std::optional<Boxed::Dictionary> dictionaryWithContentsOfURL(const QString& url) const override;

private:
    [[nodiscard]] bool isGenuine(const QByteArray& bytes, QUrl url) const;
    [[nodiscard]] std::optional<QByteArray> download(const QUrl& url) const;
    /// Runs the loop unless the program is about to quit.
    void run(QEventLoop& loop) const;
    [[nodiscard]] bool isStopping() const;
    void stop();

    int timeoutMilliseconds_;
    QByteArray publicKey_;
    mutable std::mutex mutex_;
    mutable std::set<QEventLoop*> running_; ///< guarded by mutex_
    bool isStopping_ = false;               ///< guarded by mutex_
};

} // namespace quillow
