// Shared helpers of the HTML engine's tests: render a snippet, print its tree.
#pragma once

#include "engines/html/Reader.h"
#include "engines/html/parser/Parse.h"
#include "engines/html/tree/Tree.h"
#include "engines/html/tree/TreeWalk.h"

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
inline std::string treeOf(const Tree& tree) {
    std::string out;
    std::size_t depth = 1;
    for (TreeWalk walk(tree, Tree::kDocument); walk.node() != kNoNode; walk.advance()) {
        const NodeId id = walk.node();
        const Node& node = tree.node(id);
        if (walk.ancestors().size() > depth) out += '(';
        for (; walk.ancestors().size() < depth; --depth)
            out += ')';
        depth = walk.ancestors().size();
        if (!out.empty() && out.back() != '(') out += ' ';
        if (node.kind == NodeKind::text) {
            out += "'" + std::string(tree.text(id)) + "'";
        } else {
            out += node.space == Namespace::svg ? "svg:" : node.space == Namespace::mathMl ? "math:" : "";
            out += tree.text(id);
        }
    }
    return out + std::string(depth - 1, ')');
}

/// The body of a document.
inline NodeId bodyOf(const Tree& tree) {
    return tree.next(tree.firstChild(tree.firstChild(Tree::kDocument)));
}

inline std::string treeOf(std::string_view html) {
    return treeOf(*parseHtml(std::string(html)));
}

} // namespace quillow::html
