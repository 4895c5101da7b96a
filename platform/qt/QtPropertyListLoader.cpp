#include "platform/qt/QtPropertyListLoader.h"

#include "platform/qt/PropertyList.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <QUrl>

#include <memory>

namespace quillow {

QtPropertyListLoader::QtPropertyListLoader(int timeoutMilliseconds)
    : timeoutMilliseconds_(timeoutMilliseconds) {
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { isStopping_ = true; });
}

std::optional<Boxed::Dictionary> QtPropertyListLoader::dictionaryWithContentsOfURL(const QString& url) const {
    const QUrl address(url, QUrl::StrictMode);
    if (isStopping_ || !address.isValid()) return std::nullopt;
    if (address.scheme() != u"http" && address.scheme() != u"https") return std::nullopt;
    const auto bytes = download(address);
    const auto list = bytes ? propertyListFromData(*bytes) : std::nullopt;
    return list ? list->dictionary() : std::nullopt;
}

std::optional<QByteArray> QtPropertyListLoader::download(const QUrl& url) const {
    // A manager belongs to the thread that uses it, and this runs on whatever thread asks.
    QNetworkAccessManager manager;
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setMaximumRedirectsAllowed(5);
    const std::unique_ptr<QNetworkReply> reply(manager.get(request));
    reply->setReadBufferSize(kPropertyListDownloadLimit + 1);

    QEventLoop loop;
    QByteArray bytes;
    bool isTooLarge = false;
    const auto takeWhatCame = [&] {
        bytes += reply->read(kPropertyListDownloadLimit + 1 - bytes.size());
        if (bytes.size() <= kPropertyListDownloadLimit) return;
        isTooLarge = true;
        loop.quit();
    };
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, takeWhatCame);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &loop, &QEventLoop::quit);
    QTimer::singleShot(timeoutMilliseconds_, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) loop.exec();

    if (isTooLarge || isStopping_ || !reply->isFinished() || reply->error() != QNetworkReply::NoError)
        return std::nullopt;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status < 200 || status > 299) return std::nullopt;
    takeWhatCame();
    return isTooLarge ? std::nullopt : std::optional(bytes);
}

} // namespace quillow
