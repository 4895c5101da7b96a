// Property lists over HTTP and HTTPS.
#pragma once

#include "platform/PropertyListLoader.h"

#include <QByteArray>

#include <functional>
#include <optional>
#include <utility>

class QUrl;

namespace quillow {

/// The maximum size of a download, in bytes. A release-information list has a few hundred.
inline constexpr qint64 kPropertyListDownloadLimit = qint64{64} * 1024;
/// The timeout for one mirror, in milliseconds, including name lookup and redirects.
inline constexpr int kPropertyListTimeout = 10'000;

class QtPropertyListLoader final : public PropertyListLoader {
public:
    using Download = std::function<std::optional<QByteArray>(const QUrl& url)>;

    /// `download` returns the file's bytes. It is called on the thread that loads. With an Ed25519 public key, a list
    /// counts only if the file beside it, of the same name with ".sig" added, holds the 64 bytes of its signature.
    /// Without a key every list counts.
    explicit QtPropertyListLoader(Download download, QByteArray publicKey = {})
        : download_(std::move(download))
        , publicKey_(std::move(publicKey)) {}

    /// Also returns std::nullopt for a URL that is not HTTP or HTTPS.
    [[nodiscard]] std::optional<Boxed::Dictionary> dictionaryWithContentsOfURL(const QString& url) const override;

private:
    [[nodiscard]] bool isGenuine(const QByteArray& bytes, QUrl url) const;

    Download download_;
    QByteArray publicKey_;
};

} // namespace quillow
