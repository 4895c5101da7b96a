// Any bytes as a property list, XML or binary: reading ends, and reads the same twice.
#include "platform/qt/plist/PropertyList.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto value = quillow::propertyListFromData(bytes);
    if (value.has_value() != quillow::propertyListFromData(bytes).has_value()) std::abort();
    return 0;
}
