// Any bytes through extract(): the result keeps its contract. The first byte picks the kind and the options, the
// rest is the document.
#include "engines/Extract.h"
#include "text/Utf8.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace quillow;

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

Options optionsOf(std::uint8_t choice) {
    Options options;
    if ((choice & 0x04) != 0) options.pageMarks = PageMarks::formFeed;
    if ((choice & 0x08) != 0) options.cells = CellSeparator::line;
    if ((choice & 0x10) != 0) {
        options.listMarkers = ListMarkers::off;
        options.reflow = Reflow::joinLines;
    }
    if ((choice & 0x20) != 0) options.links = LinkTargets::afterText;
    if ((choice & 0x40) != 0) options.hiddenText = HiddenText::on;
    if ((choice & 0x80) != 0) options.headersFooters = HeadersFooters::on;
    return options;
}

DocumentKind kindOf(std::uint8_t choice) {
    constexpr DocumentKind kKinds[] = {DocumentKind::rtf, DocumentKind::html, DocumentKind::rtfd, DocumentKind::pdf};
    return kKinds[choice & 0x03];
}

bool isAllowed(char32_t c, PageMarks pageMarks) {
    if (c == '\t' || c == '\n') return true;
    if (c == '\f') return pageMarks == PageMarks::formFeed;
    return c >= 0x20 && !(c >= 0x7F && c <= 0x9F);
}

void requireTextForm(std::string_view text, PageMarks pageMarks) {
    require(text::isValidUtf8(text), "the text is UTF-8");
    require(!text.starts_with("\xEF\xBB\xBF"), "no byte-order mark begins the text");
    if (text.empty()) return;
    require(text.ends_with('\n') && !text.ends_with("\n\n") && text != "\n", "one line end ends the text");
    while (!text.empty()) {
        const text::DecodedCodePoint decoded = text::decodeUtf8(text);
        require(isAllowed(decoded.codePoint, pageMarks), "the text holds no control characters");
        text.remove_prefix(decoded.length);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Options options = optionsOf(data[0]);
    const auto bytes = std::as_bytes(std::span(data + 1, size - 1));
    const Extraction extraction = extract(bytes, kindOf(data[0]), options);

    const bool hasText =
        extraction.reason == Reason::ok || extraction.reason == Reason::okEmpty || extraction.reason == Reason::partial;
    require(hasText == extraction.text.has_value(), "a text comes with the reasons that have one and with no other");
    if (!extraction.text) return 0;
    require((extraction.reason == Reason::okEmpty) == extraction.text->empty() || extraction.reason == Reason::partial,
            "the empty text has its own reason");
    requireTextForm(*extraction.text, options.pageMarks);
    require(extract(bytes, kindOf(data[0]), options).text == extraction.text, "the same document gives the same text");
    return 0;
}
