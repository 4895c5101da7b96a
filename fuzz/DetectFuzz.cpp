// The detector returns a known encoding for any bytes, and UTF-8 for well-formed UTF-8 outside ASCII.
#include "text/EncodingDetector.h"
#include "text/Utf8.h"

#include <cstdint>
#include <cstdlib>

using namespace quillow::text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const Encoding encoding = detectEncoding(bytes);
    if (encodingForLabel(encodingName(encoding)) != encoding) std::abort();
    const bool hasZero = bytes.find('\0') != std::string_view::npos;
    if (!hasZero && !byteOrderMark(bytes) && isMultiByteUtf8(bytes) && encoding != Encoding::utf8) std::abort();
    return 0;
}
