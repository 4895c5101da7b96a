#include "platform/qt/network/HttpDownload.h"

#include "base/Release.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <QUrl>

#include <memory>

namespace quillow {

namespace {

constexpr int kMostRedirects = 5;

QNetworkRequest requestFor(const QUrl& url) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // Qt would name the user's languages.
    request.setRawHeader("Accept-Language", "*");
    request.setHeader(
        QNetworkRequest::UserAgentHeader,
        QStringLiteral("%1/%2").arg(QString::fromUtf16(kApplicationName), QCoreApplication::applicationVersion()));
    request.setMaximumRedirectsAllowed(kMostRedirects);
    return request;
}

} // namespace

std::optional<QByteArray> httpDownload(const QUrl& url, int timeoutMilliseconds) {
    // A manager belongs to the thread that uses it.
    QNetworkAccessManager manager;
    const std::unique_ptr<QNetworkReply> reply(manager.get(requestFor(url)));
    // Data beyond the read buffer stays with the sender. Compressed data is decompressed only as far as it is read.
    reply->setReadBufferSize(kPropertyListDownloadLimit + 1);

    QEventLoop loop;
    QByteArray bytes;
    const auto takeWhatCame = [&] {
        QByteArray piece;
        do {
            piece = reply->read(kPropertyListDownloadLimit + 1 - bytes.size());
            bytes += piece;
        } while (!piece.isEmpty());
        if (bytes.size() > kPropertyListDownloadLimit) loop.quit();
    };
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, takeWhatCame);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(timeoutMilliseconds, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) loop.exec();

    if (!reply->isFinished() || reply->error() != QNetworkReply::NoError) return std::nullopt;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status < 200 || status > 299) return std::nullopt;
    takeWhatCame();
    if (reply->error() != QNetworkReply::NoError || bytes.size() > kPropertyListDownloadLimit) return std::nullopt;
    return bytes;
}

} // namespace quillow
