// Any bytes as an archive, keyed or unkeyed: reading ends, and a value that was read can be archived and read again.
#include "platform/qt/plist/KeyedArchive.h"
#include "platform/qt/plist/UnkeyedArchive.h"

#include <QByteArray>

#include <cstdint>
#include <cstdlib>

using namespace quillow;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    static_cast<void>(stringOfUnkeyedArchive(bytes));
    const auto archive = KeyedArchive::fromData(bytes);
    if (!archive) return 0;
    static_cast<void>(archive->string(archive->root()));
    const auto value = archive->valueOf(archive->root());
    if (!value) return 0;
    const auto written = archivedData(*value);
    if (!written) return 0;
    const auto again = KeyedArchive::fromData(*written);
    const auto valueAgain = again ? again->valueOf(again->root()) : std::nullopt;
    // Bytes are compared, not values: NaN differs from itself.
    if (!valueAgain || archivedData(*valueAgain) != written) std::abort();
    return 0;
}
