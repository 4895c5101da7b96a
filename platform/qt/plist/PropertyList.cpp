#include "platform/qt/plist/PropertyList.h"

#include "platform/qt/plist/BinaryPropertyList.h"
#include "platform/qt/plist/XmlPropertyList.h"

#include <cmath>

namespace quillow {
namespace {

constexpr char16_t kUniqueIdentifier[] = u"CF$UID";
constexpr std::int64_t kReferenceDate = 978307200; // in Unix time

} // namespace

Boxed uniqueIdentifier(std::int64_t number) {
    return Boxed::Dictionary{{QString::fromUtf16(kUniqueIdentifier), number}};
}

std::optional<std::int64_t> numberOfUniqueIdentifier(const Boxed& value) {
    const auto dictionary = value.dictionary();
    if (!dictionary || dictionary->size() != 1 || dictionary->firstKey() != kUniqueIdentifier) return std::nullopt;
    return dictionary->first().longValue();
}

double secondsFromReferenceDate(const QDateTime& date) {
    return static_cast<double>(date.toMSecsSinceEpoch()) / 1000.0 - static_cast<double>(kReferenceDate);
}

std::optional<QDateTime> dateFromReferenceDate(double seconds) {
    constexpr double kFarthest = 1e11; // about three thousand years, in seconds
    if (!(seconds > -kFarthest && seconds < kFarthest)) return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(kReferenceDate * 1000 + std::llround(seconds * 1000), Qt::UTC);
}

std::optional<Boxed> propertyListFromData(const QByteArray& bytes) {
    return bytes.startsWith("bplist00") ? readBinaryPropertyList(bytes) : readXmlPropertyList(bytes);
}

} // namespace quillow
