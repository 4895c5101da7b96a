#include "platform/qt/services/QtPropertyListLoader.h"

#include "platform/qt/plist/PropertyList.h"

#include <QUrl>

namespace quillow {

std::optional<Boxed::Dictionary> QtPropertyListLoader::dictionaryWithContentsOfURL(const QString& url) const {
    const QUrl address(url, QUrl::StrictMode);
    if (!address.isValid()) return std::nullopt;
    if (address.scheme() != u"http" && address.scheme() != u"https") return std::nullopt;
    const auto bytes = download_(address);
    const auto list = bytes ? propertyListFromData(*bytes) : std::nullopt;
    return list ? list->dictionary() : std::nullopt;
}

} // namespace quillow
