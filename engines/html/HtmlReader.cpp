#include "engines/html/HtmlReader.h"

#include "engines/html/ContentSniffer.h"
#include "engines/html/EncodingSniffer.h"
#include "engines/html/HtmlTree.h"
#include "engines/html/Renderer.h"

#include <algorithm>

namespace quillow::html {

namespace {

/// Larger documents are refused; node numbers and offsets stay far inside of their 32 bits.
constexpr std::size_t kMaxDocumentBytes = std::size_t{512} * 1024 * 1024;

std::uint64_t countCodePoints(std::string_view utf8) {
    return static_cast<std::uint64_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string render(const HtmlTree& tree, const Options& options) {
    RenderedText rendered = renderText(tree, options, AuthorStyles::apply);
    // A page that its own styles hide altogether waits for a script to show it.
    if (rendered.text.empty() && rendered.sawAuthorStyles) rendered = renderText(tree, options, AuthorStyles::ignore);
    return std::move(rendered.text);
}

} // namespace

Extraction readHtml(std::span<const std::byte> bytes, const Options& options) {
    Extraction result;
    const std::string_view document(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (document.size() > kMaxDocumentBytes) {
        result.reason = Reason::tooLarge;
        result.detail = "the document is larger than 512 MiB";
        return result;
    }
    if (const auto other = foreignContent(document)) {
        result.reason = Reason::wrongType;
        result.detail = *other;
        return result;
    }
    const SniffedEncoding sniffed = sniffEncoding(document);
    text::DecodedText decoded = text::decode(document.substr(sniffed.byteOrderMarkLength), sniffed.encoding);
    result.loss.charactersDecoded = countCodePoints(decoded.utf8);
    result.loss.charactersWithoutUnicode = decoded.replacements;
    const auto tree = parseHtml(std::move(decoded.utf8));
    result.text = render(*tree, options);
    result.reason = result.text->empty() ? Reason::okEmpty : Reason::ok;
    return result;
}

} // namespace quillow::html
