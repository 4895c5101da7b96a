// Any bytes in any encoding: the result is well-formed UTF-8 of bounded length, and code pages return scalar values.
#include "text/CodePage.h"
#include "text/Encoding.h"
#include "text/Utf8.h"

#include <cstdint>
#include <cstdlib>

using namespace quillow::text;

namespace {

void check(bool holds) {
    if (!holds) std::abort();
}

void checkDecoding(std::string_view bytes, Encoding encoding) {
    const DecodedText decoded = decode(bytes, encoding);
    check(isValidUtf8(decoded.utf8));
    check(decoded.utf8.size() <= bytes.size() * 3 + 3);
    check(decoded.replacements <= bytes.size());
}

void checkCodePage(std::string_view bytes, int number) {
    const CodePage* page = CodePage::forNumber(number);
    if (page == nullptr) return;
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
        const auto lead = static_cast<std::uint8_t>(bytes[i]);
        const auto trail = static_cast<std::uint8_t>(bytes[i + 1]);
        const char32_t c = page->isLeadByte(lead) ? page->decodePair(lead, trail) : page->decodeByte(lead);
        check(c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF));
    }
}

} // namespace

// The first byte chooses the encoding, the first two the code page.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int kEncodings = static_cast<int>(Encoding::xUserDefined) + 1;
    if (size < 2) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
    checkDecoding(bytes, static_cast<Encoding>(data[0] % kEncodings));
    checkCodePage(bytes, data[0] << 8 | data[1]);
    return 0;
}
