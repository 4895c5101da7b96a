// Whole documents through the HTML engine: the text is valid UTF-8 without control characters, and its size is
// bounded by that of the source.
#include "engines/html/Reader.h"
#include "text/Utf8.h"

#include <cstdlib>

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

void check(const quillow::Extraction& result, std::size_t size) {
    if (!result.text) {
        require(result.reason == quillow::Reason::wrongType && !result.detail.empty());
        return;
    }
    const std::string& text = *result.text;
    require(quillow::text::isValidUtf8(text));
    require(text.empty() == (result.reason == quillow::Reason::okEmpty));
    require(text.empty() || (text.back() == '\n' && (text.size() == 1 || text[text.size() - 2] != '\n')));
    for (const char c : text)
        require(static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t');
    require(text.size() <= 64 * size + 64);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span bytes(reinterpret_cast<const std::byte*>(data), size);
    quillow::Options options;
    check(quillow::html::readHtml(bytes, options), size);
    options.listMarkers = quillow::ListMarkers::off;
    options.hiddenText = quillow::HiddenText::on;
    options.links = quillow::LinkTargets::afterText;
    options.cells = quillow::CellSeparator::line;
    check(quillow::html::readHtml(bytes, options), size);
    return 0;
}
