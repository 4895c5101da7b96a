// Any text as a style sheet of a small fixed document: parsing and matching end, the number of rules is limited,
// and the values of an element do not depend on the matcher's path.
#include "engines/html/css/CssMatcher.h"
#include "engines/html/parser/Parse.h"
#include "engines/html/tree/TreeWalk.h"

#include <cstdlib>
#include <span>
#include <string>
#include <vector>

namespace {

using namespace quillow::html;

bool sameValues(const CascadedValues& a, const CascadedValues& b) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(CssProperty::count); ++i)
        if (a.value(static_cast<CssProperty>(i)) != b.value(static_cast<CssProperty>(i))) return false;
    return true;
}

/// The values of the last element of `path`, which begins at the document, from a new matcher that visits only
/// this path.
CascadedValues askedAlone(const Tree& tree, const CssStyleSheets& sheets, std::span<const NodeId> path) {
    CssMatcher matcher(tree, sheets);
    CascadedValues values;
    for (std::size_t i = 1; i < path.size(); ++i) {
        if (i > 1) matcher.enter(path[i - 1]);
        for (NodeId node = tree.firstChild(path[i - 1]); node != kNoNode; node = tree.next(node)) {
            if (tree.node(node).kind != NodeKind::element) continue;
            values = {};
            matcher.cascade(node, values);
            if (node == path[i]) break;
        }
    }
    return values;
}

/// Checks that the values of an element do not depend on what the matcher visited before.
void checkWay(const Tree& tree, const CssStyleSheets& sheets) {
    CssMatcher led(tree, sheets);
    std::vector<NodeId> path{Tree::kDocument}; // to the node that was visited last
    for (TreeWalk walk(tree, Tree::kDocument); walk.node() != kNoNode; walk.advance()) {
        if (walk.ancestors().size() == path.size() && path.size() > 1) led.enter(path.back());
        for (std::size_t size = path.size() - 1; size > walk.ancestors().size(); --size)
            led.leave();
        path.assign(walk.ancestors().begin(), walk.ancestors().end());
        path.push_back(walk.node());
        if (tree.node(walk.node()).kind != NodeKind::element) continue;
        CascadedValues values;
        led.cascade(walk.node(), values);
        if (led.steps() <= kMaxMatchSteps && !sameValues(values, askedAlone(tree, sheets, path))) std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto tree = quillow::html::parseHtml("<div id=a class='b c'><p data-x=1>1<p class=c>2<a "
                                                      "href=x>3</a><ul><li>4<li class=b>5</ul><input disabled></div>");
    const std::string css(reinterpret_cast<const char*>(data), size);
    quillow::html::CssStyleSheets sheets;
    sheets.add(css, "");
    if (sheets.rules().size() > quillow::html::kMaxRules) std::abort();
    checkWay(*tree, sheets);
    static_cast<void>(quillow::html::parseStyleAttribute(css));
    static_cast<void>(quillow::html::mediaMatches(css));
    return 0;
}
