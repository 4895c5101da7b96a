#include "platform/qt/services/QtPropertyListLoader.h"

#include "platform/qt/plist/PropertyList.h"
#include "platform/qt/services/Signature.h"

#include <QUrl>

namespace quillow {

std::optional<Boxed::Dictionary> QtPropertyListLoader::dictionaryWithContentsOfURL(const QString& url) const {
    const QUrl address(url, QUrl::StrictMode);
    if (!address.isValid()) return std::nullopt;
    if (address.scheme() != u"http" && address.scheme() != u"https") return std::nullopt;
    const auto bytes = download_(address);
    // Nothing of a list is read before its signature was checked.
    if (!bytes || !isGenuine(*bytes, address)) return std::nullopt;
    const auto list = propertyListFromData(*bytes);
    return list ? list->dictionary() : std::nullopt;
}

bool QtPropertyListLoader::isGenuine(const QByteArray& bytes, QUrl url) const {
    if (publicKey_.isEmpty()) return true;
    url.setPath(url.path(QUrl::FullyEncoded) + QStringLiteral(".sig"), QUrl::TolerantMode);
    const auto signature = download_(url);
    return signature && isSignatureOf(*signature, bytes, publicKey_);
}

} // namespace quillow
