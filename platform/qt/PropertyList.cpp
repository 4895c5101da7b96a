#include "platform/qt/PropertyList.h"

#include "platform/qt/BinaryPropertyList.h"
#include "platform/qt/XmlPropertyList.h"

namespace quillow {

std::optional<Boxed> propertyListFromData(const QByteArray& bytes) {
    return bytes.startsWith("bplist00") ? readBinaryPropertyList(bytes) : readXmlPropertyList(bytes);
}

} // namespace quillow
