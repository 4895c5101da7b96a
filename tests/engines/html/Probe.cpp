// Prints intermediate results of the HTML engine, which tools/html_conformance.py compares with test suites of the
// HTML Standard. A request on standard input is a line "WHAT ARGUMENT ARGUMENT LENGTH" and LENGTH bytes. The
// answer is a line with its length and then its bytes.
//   tokens STATE TAG   the tokens from an initial state (data, rcdata, rawtext, script, plaintext, cdata), with
// "</TAG>" as
//                      its end tag; one JSON array per line
//   tree SPACE NAME    the tree of a document ("- -"), or of a fragment in that context element; one indented node per
// line,
//                      without comments
//   encoding - -       the name of the declared encoding
#include "engines/html/parser/EncodingSniffer.h"
#include "engines/html/parser/Parse.h"
#include "engines/html/parser/TreeBuilder.h"
#include "engines/html/tree/TreeWalk.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <set>

namespace quillow::html {
namespace {

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        char escaped[8];
        if (static_cast<unsigned char>(c) < 0x20) {
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
            out += escaped;
        } else {
            if (c == '"' || c == '\\') out += '\\';
            out += c;
        }
    }
    return out + "\"";
}

std::string quotedOrNull(bool has, std::string_view text) {
    return has ? quoted(text) : "null";
}

std::string attributesOf(const Token& token) {
    std::string out = "{";
    std::set<std::string_view> seen;
    for (const Attribute& attribute : token.attributes) {
        if (!seen.insert(attribute.name()).second) continue;
        if (out.size() > 1) out += ',';
        out += quoted(attribute.name()) + ":" + quoted(attribute.value());
    }
    return out + "}";
}

std::string printed(Tree& tree, const Token& token) {
    switch (token.type) {
    case TokenType::doctype:
        return "[\"DOCTYPE\"," + quotedOrNull(!token.name.empty(), token.name) + "," +
               quotedOrNull(token.hasPublicId, tree.withReplacements(token.publicId)) + "," +
               quotedOrNull(token.hasSystemId, tree.withReplacements(token.systemId)) + "," +
               (token.forceQuirks ? "false" : "true") + "]";
    case TokenType::startTag:
        return "[\"StartTag\"," + quoted(token.name) + "," + attributesOf(token) + (token.selfClosing ? ",true]" : "]");
    case TokenType::endTag: return "[\"EndTag\"," + quoted(token.name) + "]";
    case TokenType::comment: return "[\"Comment\"," + quoted(tree.withReplacements(token.text)) + "]";
    case TokenType::characters: return "[\"Character\"," + quoted(token.text) + "]";
    case TokenType::endOfFile: break;
    }
    return "";
}

Tokenizer::State stateOf(std::string_view name) {
    if (name == "rcdata") return Tokenizer::State::rcdata;
    if (name == "rawtext") return Tokenizer::State::rawtext;
    if (name == "script") return Tokenizer::State::scriptData;
    if (name == "plaintext") return Tokenizer::State::plaintext;
    return Tokenizer::State::data;
}

std::string tokens(std::string_view state, std::string_view tag, std::string_view bytes) {
    const bool cdata = state == "cdata";
    Tree tree("<" + std::string(tag) + ">" + (cdata ? "<![CDATA[" : "") + withLineFeeds(std::string(bytes)));
    Tokenizer tokenizer(tree);
    Token token;
    tokenizer.next(token);
    tokenizer.switchTo(stateOf(state));
    tokenizer.allowCdata(cdata);
    std::string out;
    for (tokenizer.next(token); token.type != TokenType::endOfFile; tokenizer.next(token)) {
        out += printed(tree, token) + "\n";
        tokenizer.allowCdata(false);
    }
    return out;
}

std::string printed(const Tree& tree, NodeId id, std::size_t depth) {
    const Node& node = tree.node(id);
    const std::string indent = "| " + std::string(2 * depth, ' ');
    if (node.kind == NodeKind::text) return indent + "\"" + std::string(tree.text(id)) + "\"\n";
    const std::string_view prefix = node.space == Namespace::svg      ? "svg "
                                    : node.space == Namespace::mathMl ? "math "
                                                                      : "";
    std::string out = indent + "<" + std::string(prefix) + std::string(tree.text(id)) + ">\n";
    std::set<std::string_view> seen;
    for (const Attribute attribute : tree.attributes(id))
        if (seen.insert(attribute.name()).second)
            out += indent + "  " + std::string(attribute.name()) + "=\"" + std::string(attribute.value()) + "\"\n";
    return out;
}

std::string treeOf(std::string_view space, const std::string& name, std::string_view bytes) {
    const Namespace contextSpace = space == "svg"    ? Namespace::svg
                                   : space == "math" ? Namespace::mathMl
                                                     : Namespace::html;
    const bool isDocument = space == "-";
    const auto tree =
        isDocument ? parseHtml(std::string(bytes)) : parseFragment(std::string(bytes), name, contextSpace);
    NodeId root = Tree::kDocument;
    if (!isDocument) root = tree->firstChild(root);
    std::string out;
    for (TreeWalk walk(*tree, root); walk.node() != kNoNode; walk.advance())
        out += printed(*tree, walk.node(), walk.ancestors().size() - 1);
    return out;
}

std::string answer(const std::string& what, const std::string& first, const std::string& second,
                   std::string_view bytes) {
    if (what == "tokens") return tokens(first, second, bytes);
    if (what == "tree") return treeOf(first, second, bytes);
    const auto mark = text::byteOrderMark(bytes);
    const auto encoding = mark ? mark->encoding : declaredEncoding(bytes).value_or(text::Encoding::windows1252);
    return std::string(text::encodingName(encoding));
}

} // namespace
} // namespace quillow::html

int main() {
    std::ios::sync_with_stdio(false);
    std::string what;
    std::string first;
    std::string second;
    std::size_t length = 0;
    while (std::cin >> what >> first >> second >> length) {
        std::cin.get();
        std::string bytes(length, '\0');
        std::cin.read(bytes.data(), static_cast<std::streamsize>(length));
        const std::string answer = quillow::html::answer(what, first, second, bytes);
        std::cout << answer.size() << '\n' << answer << std::flush;
    }
    return 0;
}
