// What a worker may send that a document has taken over: the parent takes nothing that breaks the engines' contract.
// The first byte picks the page marks and the size of the body, the rest is the body and the text.
#include "text/Utf8.h"
#include "worker/Wire.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace quillow;

/// Seeds begin with it.
constexpr worker::Token kToken = 0;

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

bool isAllowed(char32_t c, PageMarks pageMarks) {
    if (c == '\t' || c == '\n') return true;
    if (c == '\f') return pageMarks == PageMarks::formFeed;
    return c >= 0x20 && !(c >= 0x7F && c <= 0x9F);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    Options options;
    if ((data[0] & 0x80) != 0) options.pageMarks = PageMarks::formFeed;
    const std::string_view rest(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::size_t bodySize = std::min<std::size_t>(data[0] & 0x7F, rest.size());
    static_cast<void>(worker::decodeGreeting(rest));
    static_cast<void>(worker::decodeRequest(rest));

    const auto extraction =
        worker::decodeAnswer(rest.substr(0, bodySize), std::string(rest.substr(bodySize)), kToken, options);
    if (!extraction) return 0;
    require(text::isValidUtf8(extraction->detail), "the detail is UTF-8");
    require(reasonName(extraction->reason) != "", "the reason has a name");
    const bool mayHaveText = extraction->reason == Reason::ok || extraction->reason == Reason::okEmpty ||
                             extraction->reason == Reason::partial;
    require(mayHaveText == extraction->text.has_value(), "a text comes with the reasons that have one");
    if (!extraction->text) return 0;
    std::string_view text = *extraction->text;
    require(text::isValidUtf8(text), "the text is UTF-8");
    require(text.empty() || text.ends_with('\n'), "a line end ends the text");
    while (!text.empty()) {
        const text::DecodedCodePoint decoded = text::decodeUtf8(text);
        require(isAllowed(decoded.codePoint, options.pageMarks), "the text holds no control characters");
        text.remove_prefix(decoded.length);
    }
    require(
        worker::decodeAnswer(worker::encodeAnswer(kToken, *extraction), *extraction->text, kToken, options).has_value(),
        "what was taken can be sent again");
    return 0;
}
