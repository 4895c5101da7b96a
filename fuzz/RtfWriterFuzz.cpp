// A text that RtfWriter writes as RTF must come back unchanged. The first half of the input makes the writer's
// choices, as often as needed; the second half is the text.
#include "engines/rtf/Reader.h"
#include "fuzz/RtfWriter.h"
#include "text/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

namespace {

using namespace quillow;

/// Decodes UTF-8 and keeps the characters that survive RTF.
std::u32string textFrom(std::string_view bytes) {
    std::u32string text;
    while (!bytes.empty()) {
        const text::DecodedCodePoint decoded = text::decodeUtf8(bytes);
        bytes.remove_prefix(decoded.length);
        if (decoded.wellFormed && fuzz::survivesRtf(decoded.codePoint)) text.push_back(decoded.codePoint);
    }
    return text;
}

/// The text in the text form: it ends with exactly one line end unless it is empty.
std::string expectedFrom(std::u32string text) {
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    std::string utf8;
    for (const char32_t c : text)
        text::appendUtf8(utf8, c);
    if (!utf8.empty()) utf8 += '\n';
    return utf8;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::span<const std::uint8_t> choices(data, size / 2);
    const std::u32string text = textFrom({reinterpret_cast<const char*>(data) + size / 2, size - size / 2});
    std::size_t at = 0;
    fuzz::RtfWriter writer([&](unsigned count) { return choices[at++ % choices.size()] % count; });
    const std::string document = writer.write(text);
    const Extraction extraction = rtf::readRtf(std::as_bytes(std::span(document)), {});
    const std::string expected = expectedFrom(text);
    if (extraction.text != expected) std::abort();
    if (extraction.reason != (expected.empty() ? Reason::okEmpty : Reason::ok)) std::abort();
    if (extraction.loss.charactersWithoutUnicode != 0 || extraction.loss.partsSkipped != 0) std::abort();
    return 0;
}
