// Any bytes as a property list, XML or binary: reading ends, and a list that was read can be written and read again.
#include "platform/qt/plist/BinaryPropertyListWriter.h"
#include "platform/qt/plist/PropertyList.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

using namespace quillow;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto value = propertyListFromData(bytes);
    if (!value) return 0;
    // Bytes are compared, not values: NaN differs from itself.
    const QByteArray written = binaryPropertyList(*value);
    const auto again = propertyListFromData(written);
    if (!again || binaryPropertyList(*again) != written) std::abort();
    return 0;
}
