// Downloads of a small file over HTTP and HTTPS.
#pragma once

#include "platform/qt/services/QtPropertyListLoader.h"

#include <QByteArray>

#include <optional>

class QUrl;

namespace quillow {

/// The file's bytes. Returns std::nullopt for an unsuccessful status, an encryption error, more bytes than the limit,
/// too many redirects, a redirect from HTTPS to HTTP, and after the timeout. The request has nothing that identifies
/// the user: no cookies, no languages, and in the user agent the program's release only. Callable from any thread, when
/// there is a QCoreApplication.
[[nodiscard]] std::optional<QByteArray> httpDownload(const QUrl& url, int timeoutMilliseconds = kPropertyListTimeout);

} // namespace quillow
