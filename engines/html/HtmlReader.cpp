#include "engines/html/HtmlReader.h"

#include "engines/html/ContentSniffer.h"
#include "engines/html/EncodingSniffer.h"
#include "engines/html/HtmlTree.h"
#include "engines/html/Renderer.h"

#include <cstring>
#include <optional>

namespace quillow::html {

namespace {

/// Larger documents are refused; node numbers and offsets stay far inside of their 32 bits.
constexpr std::size_t kMaxDocumentBytes = std::size_t{512} * 1024 * 1024;

/// Bytes that begin a character, eight at a time.
std::uint64_t countCodePoints(std::string_view utf8) {
    constexpr std::uint64_t kLowBits = 0x0101010101010101ULL;
    std::uint64_t continuations = 0;
    std::size_t at = 0;
    for (; at + sizeof(std::uint64_t) <= utf8.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t block = 0;
        std::memcpy(&block, utf8.data() + at, sizeof block);
        // Continuation bytes have the highest bit set and the next one clear.
        continuations += (((block >> 7) & ~(block >> 6) & kLowBits) * kLowBits) >> 56;
    }
    for (; at < utf8.size(); ++at)
        if ((static_cast<unsigned char>(utf8[at]) & 0xC0) == 0x80) ++continuations;
    return utf8.size() - continuations;
}

text::DecodedText decode(std::string_view document) {
    const SniffedEncoding sniffed = sniffEncoding(document);
    document.remove_prefix(sniffed.byteOrderMarkLength);
    const bool wide = sniffed.encoding == text::Encoding::utf16le || sniffed.encoding == text::Encoding::utf16be;
    // Half a code unit at the end of a file cut short is no character.
    if (wide && document.size() % 2 != 0) document.remove_suffix(1);
    return text::decode(document, sniffed.encoding);
}

/// What a document of frames says to readers without frames: the text of its "noframes" elements, which is HTML again.
/// Nothing for a document that has a body.
std::optional<std::string> framesAlternative(const HtmlTree& tree) {
    bool hasFrames = false;
    std::string alternative;
    for (NodeId id = 0; id < tree.size(); ++id) {
        const Node& node = tree.node(id);
        if (node.tag == Tag::frameset && tree.node(node.parent).tag == Tag::html) hasFrames = true;
        if (node.tag != Tag::noframes) continue;
        for (NodeId child = node.firstChild; child != kNoNode; child = tree.node(child).next)
            if (tree.node(child).kind == NodeKind::text) alternative += tree.node(child).text;
    }
    return hasFrames ? std::optional(std::move(alternative)) : std::nullopt;
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
    text::DecodedText decoded = decode(document);
    result.loss.charactersDecoded = countCodePoints(decoded.utf8);
    result.loss.charactersWithoutUnicode = decoded.replacements;
    auto tree = parseHtml(std::move(decoded.utf8));
    if (auto alternative = framesAlternative(*tree)) tree = parseHtml(std::move(*alternative));
    result.text = render(*tree, options);
    result.reason = result.text->empty() ? Reason::okEmpty : Reason::ok;
    return result;
}

} // namespace quillow::html
