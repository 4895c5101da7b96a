// Any bytes as an RTF document, with options chosen by the last byte: the result has the text form, the reason
// fits it, and its size is bounded by that of the document.
#include "engines/rtf/Reader.h"
#include "text/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

namespace {

using namespace quillow;

/// One byte of a symbol font can become four bytes, and a label can add as many. kAllowance is for short documents.
constexpr std::size_t kMaxGrowth = 10;
constexpr std::size_t kAllowance = 8 * 1024;

Options optionsFrom(std::uint8_t bits) {
    Options options;
    if ((bits & 1) != 0) options.pageMarks = PageMarks::formFeed;
    if ((bits & 2) != 0) options.cells = CellSeparator::line;
    if ((bits & 4) != 0) options.listMarkers = ListMarkers::off;
    if ((bits & 8) != 0) options.links = LinkTargets::afterText;
    if ((bits & 16) != 0) options.hiddenText = HiddenText::on;
    if ((bits & 32) != 0) options.headersFooters = HeadersFooters::on;
    if ((bits & 64) != 0) options.reflow = Reflow::joinLines;
    return options;
}

void require(bool holds) {
    if (!holds) std::abort();
}

bool hasOnlyTextControls(const std::string& text, const Options& options) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<std::uint8_t>(text[i]);
        const bool isAllowed = c == '\t' || c == '\n' || (c == '\f' && options.pageMarks == PageMarks::formFeed);
        if ((c < 0x20 && !isAllowed) || c == 0x7F) return false;
        if (c == 0xC2 && static_cast<std::uint8_t>(text[i + 1]) < 0xA0) return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Options options = optionsFrom(size > 0 ? data[size - 1] : 0);
    const Extraction extraction = rtf::readRtf(std::as_bytes(std::span(data, size)), options);
    const bool givesText =
        extraction.reason == Reason::ok || extraction.reason == Reason::okEmpty || extraction.reason == Reason::partial;
    require(extraction.text.has_value() == givesText);
    if (!givesText) return 0;
    const std::string& text = *extraction.text;
    require(text.empty() == (extraction.reason == Reason::okEmpty));
    require(text::isValidUtf8(text));
    require(hasOnlyTextControls(text, options));
    require(text.empty() || (text.back() == '\n' && (text.size() == 1 || text[text.size() - 2] != '\n')));
    require(text.substr(0, 3) != "\xEF\xBB\xBF");
    require(text.size() <= size * kMaxGrowth + kAllowance);
    return 0;
}
