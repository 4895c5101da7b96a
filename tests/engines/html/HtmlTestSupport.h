// What the tests of the HTML engine share: rendering a snippet, and printing its tree.
#pragma once

#include "engines/html/HtmlReader.h"
#include "engines/html/HtmlTree.h"

#include <string>
#include <string_view>

namespace quillow::html {

inline Extraction readText(std::string_view html, const Options& options = {}) {
    return readHtml({reinterpret_cast<const std::byte*>(html.data()), html.size()}, options);
}

/// The text without its last line end.
inline std::string textOf(std::string_view html, const Options& options = {}) {
    Extraction result = readText(html, options);
    std::string text = result.text.value_or("(nothing)");
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

/// The tree in one line: "html(head body(p('text')))", with "svg:" and "math:" before foreign names.
inline std::string treeOf(const HtmlTree& tree) {
    std::string out;
    NodeId id = tree.firstChild(HtmlTree::kDocument);
    while (id != kNoNode) {
        const Node& node = tree.node(id);
        if (!out.empty() && out.back() != '(') out += ' ';
        if (node.kind == NodeKind::text) {
            out += "'" + std::string(tree.text(id)) + "'";
        } else {
            out += node.space == Namespace::svg ? "svg:" : node.space == Namespace::mathMl ? "math:" : "";
            out += tree.text(id);
        }
        if (tree.firstChild(id) != kNoNode) {
            out += '(';
            id = tree.firstChild(id);
            continue;
        }
        while (id != kNoNode && tree.node(id).isLast()) {
            id = tree.parent(id);
            if (id == HtmlTree::kDocument) return out;
            out += ')';
        }
        id = tree.node(id).next();
    }
    return out;
}

inline std::string treeOf(std::string_view html) {
    return treeOf(*parseHtml(std::string(html)));
}

} // namespace quillow::html
