// A style sheet on a small fixed document: matching ends within its bound, and every value applied is one that exists.
#include "engines/html/CssMatcher.h"

#include <cstdlib>
#include <string>

namespace {

using namespace quillow::html;

bool sameValues(const CascadedValues& a, const CascadedValues& b) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(CssProperty::count); ++i)
        if (a.value(static_cast<CssProperty>(i)) != b.value(static_cast<CssProperty>(i))) return false;
    return true;
}

/// What applies to an element is the same whether or not the matcher was led to it through the tree.
void checkAncestorFilter(const HtmlTree& tree, const CssStyleSheets& sheets) {
    CssMatcher led(tree, sheets);
    CssMatcher alone(tree, sheets);
    NodeId node = tree.firstChild(HtmlTree::kDocument);
    while (node != HtmlTree::kDocument) {
        if (tree.node(node).kind == NodeKind::element) {
            CascadedValues a;
            CascadedValues b;
            led.cascade(node, a);
            alone.cascade(node, b);
            if (alone.steps() <= kMaxMatchSteps && !sameValues(a, b)) std::abort();
        }
        led.enter(node);
        if (tree.firstChild(node) != kNoNode) {
            node = tree.firstChild(node);
            continue;
        }
        led.leave();
        while (node != HtmlTree::kDocument && tree.node(node).isLast()) {
            node = tree.parent(node);
            if (node != HtmlTree::kDocument) led.leave();
        }
        if (node != HtmlTree::kDocument) node = tree.node(node).next();
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
    checkAncestorFilter(*tree, sheets);
    static_cast<void>(quillow::html::parseStyleAttribute(css));
    static_cast<void>(quillow::html::mediaMatches(css));
    return 0;
}
