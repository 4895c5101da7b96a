// Fills the tree from the events of libxml2's HTML parser. The only file that knows that library.
#include "engines/html/HtmlTree.h"

#include <libxml/HTMLparser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <limits>

namespace quillow::html {

namespace {

std::string_view view(const xmlChar* text) {
    return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

/// Turns the parser's events into nodes. Elements nested beyond kMaxTreeDepth become children of the element at that depth.
class TreeBuilder {
public:
    explicit TreeBuilder(HtmlTree& tree)
        : tree_(tree) {
        open_.push_back(HtmlTree::kDocument);
    }

    void startElement(const xmlChar* name, const xmlChar** attributes) {
        pending_.clear();
        for (; attributes != nullptr && attributes[0] != nullptr; attributes += 2)
            if (pending_.size() < kMaxAttributes)
                pending_.push_back({tree_.keep(view(attributes[0])), tree_.keep(view(attributes[1]))});
        const Tag tag = tagForName(view(name));
        if (tag == Tag::svg) space_ = Namespace::svg;
        if (tag == Tag::math) space_ = Namespace::mathMl;
        const std::string_view kept = tag == Tag::unknown ? tree_.keep(view(name)) : tagName(tag);
        const NodeId element = tree_.createElement(tag, kept, space_, pending_);
        tree_.append(open_[std::min(open_.size(), kMaxTreeDepth) - 1], element);
        open_.push_back(element);
    }

    void endElement() {
        if (open_.size() == 1) return;
        const Tag tag = tree_.node(open_.back()).tag;
        if (tag == Tag::svg || tag == Tag::math) space_ = Namespace::html;
        open_.pop_back();
    }

    void characters(std::string_view text) { tree_.append(open_.back(), tree_.createText(tree_.keep(text))); }

private:
    HtmlTree& tree_;
    std::vector<NodeId> open_;
    std::vector<Attribute> pending_;
    Namespace space_ = Namespace::html;
};

TreeBuilder& builder(void* context) {
    return *static_cast<TreeBuilder*>(context);
}

void onStartElement(void* context, const xmlChar* name, const xmlChar** attributes) {
    builder(context).startElement(name, attributes);
}

void onEndElement(void* context, const xmlChar* /*name*/) {
    builder(context).endElement();
}

void onCharacters(void* context, const xmlChar* text, int length) {
    builder(context).characters({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
}

/// The input stream preprocessing of the HTML Standard, and no NUL, at which the parser would stop.
void normalize(std::string& source) {
    std::size_t out = 0;
    for (std::size_t in = 0; in < source.size(); ++in) {
        if (source[in] == '\0') continue;
        if (source[in] == '\r' && in + 1 < source.size() && source[in + 1] == '\n') continue;
        source[out++] = source[in] == '\r' ? '\n' : source[in];
    }
    source.resize(out);
}

} // namespace

std::unique_ptr<HtmlTree> parseHtml(std::string utf8) {
    auto tree = std::make_unique<HtmlTree>(std::move(utf8));
    normalize(tree->source());
    if (tree->source().empty() || tree->source().size() > std::numeric_limits<int>::max()) return tree;
    TreeBuilder target(*tree);
    xmlSAXHandler handler{};
    handler.startElement = onStartElement;
    handler.endElement = onEndElement;
    handler.characters = onCharacters;
    handler.ignorableWhitespace = onCharacters;
    handler.cdataBlock = onCharacters;
    htmlParserCtxtPtr parser =
        htmlCreateMemoryParserCtxt(tree->source().data(), static_cast<int>(tree->source().size()));
    if (parser == nullptr) return tree;
    htmlCtxtUseOptions(parser, HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET |
                                   HTML_PARSE_IGNORE_ENC);
    xmlSwitchEncoding(parser, XML_CHAR_ENCODING_UTF8);
    *parser->sax = handler;
    parser->userData = &target;
    htmlParseDocument(parser);
    xmlFreeDoc(parser->myDoc);
    parser->myDoc = nullptr;
    htmlFreeParserCtxt(parser);
    return tree;
}

} // namespace quillow::html
