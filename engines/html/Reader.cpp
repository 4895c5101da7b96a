#include "engines/html/Reader.h"

#include "engines/html/parser/EncodingSniffer.h"
#include "engines/html/parser/Parse.h"
#include "engines/html/render/Renderer.h"
#include "engines/html/tree/Tree.h"

#include <optional>

namespace quillow::html {

namespace {

/// Larger documents are refused, so that node numbers and offsets fit well into 32 bits.
constexpr std::size_t kMaxDocumentBytes = std::size_t{512} * 1024 * 1024;

/// A document as UTF-8. If its bytes already are UTF-8, it is used in place.
struct Utf8Document {
    std::string_view inPlace;
    std::optional<std::string> decoded;
    LossAccount loss;

    [[nodiscard]] std::string_view view() const { return decoded ? std::string_view(*decoded) : inPlace; }
};

/// True if bytes up to 0x7F always mean themselves, whatever came before them (Encoding Standard, section 4.2).
bool keepsAscii(text::Encoding encoding) {
    switch (encoding) {
    case text::Encoding::utf16le:
    case text::Encoding::utf16be:
    case text::Encoding::iso2022Jp:
    case text::Encoding::replacement: return false;
    default: return true;
    }
}

Utf8Document decode(std::string_view bytes) {
    const text::Utf8Prefix prefix = text::wellFormedUtf8Prefix(bytes);
    const SniffedEncoding sniffed = sniffEncoding(bytes, prefix);
    Utf8Document document;
    document.inPlace = bytes.substr(sniffed.byteOrderMarkLength);
    const bool wellFormed = prefix.bytes == bytes.size();
    const bool ascii = wellFormed && prefix.codePoints == prefix.bytes;
    if (ascii ? keepsAscii(sniffed.encoding) : wellFormed && sniffed.encoding == text::Encoding::utf8) {
        const bool marked = sniffed.byteOrderMarkLength > 0;
        document.loss.charactersDecoded = prefix.codePoints - (marked ? 1 : 0);
        return document;
    }
    const bool wide = sniffed.encoding == text::Encoding::utf16le || sniffed.encoding == text::Encoding::utf16be;
    // Half a code unit at the end of a truncated file is not a character.
    if (wide && document.inPlace.size() % 2 != 0) document.inPlace.remove_suffix(1);
    text::DecodedText decoded = text::decode(document.inPlace, sniffed.encoding);
    document.decoded = std::move(decoded.utf8);
    document.loss.charactersDecoded = text::wellFormedUtf8Prefix(document.view()).codePoints;
    document.loss.charactersWithoutUnicode = decoded.replacements;
    return document;
}

/// The text that a frameset document has for readers without frames: the contents of its "noframes" elements, which
/// are HTML again. std::nullopt for a document without a frameset.
std::optional<std::string> framesAlternative(const Tree& tree) {
    bool hasFrames = false;
    std::string alternative;
    for (const NodeId id : tree.notedElements()) {
        const Node& node = tree.node(id);
        if (node.tag == Tag::frameset) hasFrames = true;
        if (node.tag != Tag::noframes) continue;
        for (NodeId child = tree.firstChild(id); child != kNoNode; child = tree.next(child))
            if (tree.node(child).kind == NodeKind::text) alternative += tree.text(child);
    }
    return hasFrames ? std::optional(std::move(alternative)) : std::nullopt;
}

std::string render(const Tree& tree, const Options& options) {
    RenderedText rendered = renderText(tree, options, AuthorStyles::apply);
    // A page that its own styles hide completely expects a script to show it.
    if (rendered.text.empty() && rendered.sawAuthorStyles) rendered = renderText(tree, options, AuthorStyles::ignore);
    return std::move(rendered.text);
}

} // namespace

Extraction readHtml(std::span<const std::byte> bytes, const Options& options, const BytesDone& bytesDone) {
    const std::string_view document(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (document.size() > kMaxDocumentBytes) return failed(Reason::tooLarge, "the document is larger than 512 MiB");
    Utf8Document utf8 = decode(document);
    Extraction result;
    result.loss = utf8.loss;
    if (!utf8.decoded && utf8.inPlace.find('\r') != std::string_view::npos)
        utf8.decoded = copyWithLineFeeds(utf8.inPlace);
    if (utf8.decoded && bytesDone) bytesDone();
    auto tree = utf8.decoded ? parseHtml(std::move(*utf8.decoded)) : parseHtmlInPlace(utf8.inPlace);
    if (auto alternative = framesAlternative(*tree)) {
        tree.reset(); // free the first tree before the second is made
        tree = parseHtml(std::move(*alternative));
    }
    result.text = render(*tree, options);
    result.reason = result.text->empty() ? Reason::okEmpty : Reason::ok;
    return result;
}

} // namespace quillow::html
