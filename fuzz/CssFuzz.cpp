// A style sheet on a small fixed document: matching ends within its bound, and every value applied is one that exists.
#include "engines/html/CssMatcher.h"

#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto tree = quillow::html::parseHtml("<div id=a class='b c'><p data-x=1>1<p class=c>2<a "
                                                      "href=x>3</a><ul><li>4<li class=b>5</ul><input disabled></div>");
    const std::string css(reinterpret_cast<const char*>(data), size);
    quillow::html::CssStyleSheets sheets;
    sheets.add(css, "");
    quillow::html::CssMatcher matcher(*tree, sheets);
    for (quillow::html::NodeId id = 1; id < tree->size(); ++id) {
        if (tree->node(id).kind != quillow::html::NodeKind::element) continue;
        quillow::html::CascadedValues values;
        matcher.cascade(id, values);
    }
    if (sheets.rules().size() > quillow::html::kMaxRules) std::abort();
    static_cast<void>(quillow::html::parseStyleAttribute(css));
    static_cast<void>(quillow::html::mediaMatches(css));
    return 0;
}
