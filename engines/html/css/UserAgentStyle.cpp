#include "engines/html/css/UserAgentStyle.h"

#include "engines/html/tree/TagSet.h"
#include "text/Ascii.h"

#include <array>

namespace quillow::html {

namespace {

constexpr std::size_t kTagCount = static_cast<std::size_t>(Tag::count);
using DisplayTable = std::array<Display, kTagCount>;

constexpr void set(DisplayTable& table, Display display, std::initializer_list<Tag> tags) {
    for (const Tag tag : tags)
        table[static_cast<std::size_t>(tag)] = display;
}

constexpr DisplayTable makeHtmlTable() {
    DisplayTable table{};
    table.fill(Display::inline_);
    // 15.3.1 Hidden elements; noembed and noframes because embeds and frames are supported.
    set(table, Display::none,
        {Tag::area, Tag::base, Tag::basefont, Tag::bgsound, Tag::datalist, Tag::head, Tag::link, Tag::meta,
         Tag::noembed, Tag::noframes, Tag::param, Tag::rp, Tag::script, Tag::style, Tag::template_, Tag::title,
         Tag::source, Tag::track});
    // 15.3.2 to 15.3.4, 15.3.13, 15.3.14: the page, flow content, sections, fieldset, details.
    set(table, Display::block,
        {Tag::address,    Tag::article,  Tag::aside,  Tag::blockquote, Tag::body,      Tag::center,   Tag::dd,
         Tag::details,    Tag::dialog,   Tag::dir,    Tag::div,        Tag::dl,        Tag::dt,       Tag::fieldset,
         Tag::figcaption, Tag::figure,   Tag::footer, Tag::form,       Tag::frame,     Tag::frameset, Tag::h1,
         Tag::h2,         Tag::h3,       Tag::h4,     Tag::h5,         Tag::h6,        Tag::header,   Tag::hgroup,
         Tag::hr,         Tag::html,     Tag::legend, Tag::listing,    Tag::main,      Tag::menu,     Tag::nav,
         Tag::ol,         Tag::optgroup, Tag::option, Tag::p,          Tag::plaintext, Tag::pre,      Tag::search,
         Tag::section,    Tag::summary,  Tag::ul,     Tag::xmp});
    set(table, Display::listItem, {Tag::li});
    set(table, Display::contents, {Tag::slot});
    // 15.3.8 Tables.
    set(table, Display::table, {Tag::table});
    set(table, Display::tableCaption, {Tag::caption});
    set(table, Display::tableColumn, {Tag::col, Tag::colgroup});
    set(table, Display::tableRowGroup, {Tag::tbody, Tag::tfoot, Tag::thead});
    set(table, Display::tableRow, {Tag::tr});
    set(table, Display::tableCell, {Tag::td, Tag::th});
    // 15.5 Widgets.
    set(table, Display::inlineBlock,
        {Tag::button, Tag::input, Tag::marquee, Tag::meter, Tag::progress, Tag::select, Tag::textarea});
    return table;
}
constexpr DisplayTable kHtmlDisplay = makeHtmlTable();

/// MathML Core, appendix A: every element is a box of its own.
Display mathDisplay(const Tree& tree, NodeId element) {
    const Node& node = tree.node(element);
    switch (node.tag) {
    case Tag::math: {
        const auto display = tree.attribute(element, AttributeName::display);
        return display && text::equalsIgnoringCase(*display, "block") ? Display::block : Display::inlineBlock;
    }
    case Tag::annotation:
    case Tag::annotationXml: return Display::none;
    case Tag::mtable: return Display::inlineTable;
    case Tag::mtr: return Display::tableRow;
    case Tag::mtd: return Display::tableCell;
    default: break;
    }
    return Display::block;
}

Display svgDisplay(const Node& node) {
    switch (node.tag) {
    case Tag::svg: return Display::inlineBlock;
    case Tag::text:
    case Tag::foreignObject: return Display::block;
    case Tag::title:
    case Tag::desc:
    case Tag::metadata:
    case Tag::script:
    case Tag::style: return Display::none;
    default: return Display::inline_;
    }
}

/// 15.3.9 Lists, with the presentational `type` attribute, which applies to list items too.
ListStyle listStyleOf(const Tree& tree, NodeId element, ListStyle inherited) {
    const Node& node = tree.node(element);
    ListStyle style = inherited;
    if (node.tag == Tag::ul || node.tag == Tag::menu || node.tag == Tag::dir) {
        style = ListStyle::bullet;
    } else if (node.tag == Tag::ol) {
        style = ListStyle::decimal;
    } else if (node.tag != Tag::li) {
        return style;
    }
    const auto type = tree.attribute(element, AttributeName::type);
    if (!type) return style;
    if (*type == "1") return ListStyle::decimal;
    if (*type == "a") return ListStyle::lowerAlpha;
    if (*type == "A") return ListStyle::upperAlpha;
    if (*type == "i") return ListStyle::lowerRoman;
    if (*type == "I") return ListStyle::upperRoman;
    if (text::equalsIgnoringCase(*type, "none")) return ListStyle::none;
    for (const std::string_view bullet : {"disc", "circle", "square"})
        if (text::equalsIgnoringCase(*type, bullet)) return ListStyle::bullet;
    return style;
}

constexpr TagSet kTableParts{Tag::table, Tag::thead, Tag::tbody, Tag::tfoot, Tag::tr};

/// The elements with more rules than a display type.
constexpr TagSet kWithRules{Tag::table,  Tag::td,    Tag::th,   Tag::img,     Tag::iframe,    Tag::embed, Tag::object,
                            Tag::dialog, Tag::input, Tag::pre,  Tag::listing, Tag::plaintext, Tag::xmp,   Tag::nobr,
                            Tag::ul,     Tag::ol,    Tag::menu, Tag::dir,     Tag::li};

/// 15.3.8 and 15.4.3: the `align` attribute makes a table or an embedded element float.
void applyAlign(const Tree& tree, NodeId element, Style& style) {
    const auto align = tree.attribute(element, AttributeName::align);
    if (align && (text::equalsIgnoringCase(*align, "left") || text::equalsIgnoringCase(*align, "right")))
        style.floating = Flow::outOfFlow;
}

void applyHtmlRules(const Tree& tree, NodeId element, Style& style) {
    const Node& node = tree.node(element);
    switch (node.tag) {
    case Tag::dialog:
        if (!tree.has(element, AttributeName::open)) style.display = Display::none;
        style.positioned = Flow::outOfFlow;
        break;
    case Tag::input: {
        const auto type = tree.attribute(element, AttributeName::type);
        if (type && text::equalsIgnoringCase(*type, "image")) applyAlign(tree, element, style);
        break;
    }
    case Tag::img:
    case Tag::iframe:
    case Tag::embed:
    case Tag::object: applyAlign(tree, element, style); break;
    case Tag::pre:
    case Tag::listing:
    case Tag::plaintext:
    case Tag::xmp: style.whiteSpace = WhiteSpace::preserve; break;
    case Tag::nobr: style.whiteSpace = WhiteSpace::normal; break;
    case Tag::table: // 15.3.8, in quirks mode
        if (tree.isQuirky()) style.whiteSpace = WhiteSpace::normal;
        applyAlign(tree, element, style);
        break;
    case Tag::td:
    case Tag::th: // 15.3.8
        if (tree.has(element, AttributeName::nowrap)) style.whiteSpace = WhiteSpace::normal;
        break;
    default: style.listStyle = listStyleOf(tree, element, style.listStyle); break;
    }
}

} // namespace

void userAgentStyle(const Tree& tree, NodeId element, const Style& parent, Style& style) {
    const Node& node = tree.node(element);
    style.visibility = parent.visibility;
    style.whiteSpace = parent.whiteSpace;
    style.listStyle = parent.listStyle;
    if (node.space == Namespace::html) {
        style.display = kHtmlDisplay[static_cast<std::size_t>(node.tag)];
        if (kWithRules.contains(node.tag)) applyHtmlRules(tree, element, style);
        if (tree.has(element, {AttributeName::hidden, AttributeName::popover})) {
            if (node.tag != Tag::embed) style.display = Display::none;
            if (tree.has(element, AttributeName::popover)) style.positioned = Flow::outOfFlow;
        }
    } else if (node.space == Namespace::svg) {
        style.display = svgDisplay(node);
    } else {
        style.display = mathDisplay(tree, element);
        if (node.tag == Tag::math) style.whiteSpace = WhiteSpace::normal;
        if (node.tag == Tag::mphantom) style.visibility = Visibility::hidden;
    }
}

Display defaultDisplay(const Node& element) {
    if (element.space == Namespace::svg) return svgDisplay(element);
    if (element.space == Namespace::mathMl) return Display::block;
    const Display display = kHtmlDisplay[static_cast<std::size_t>(element.tag)];
    return display == Display::none ? Display::block : display;
}

bool isNeverShown(const Tree& tree, NodeId element, Tag parent) {
    const Node& node = tree.node(element);
    if (node.space != Namespace::html) return false;
    switch (node.tag) {
    case Tag::audio: return !tree.has(element, AttributeName::controls);
    case Tag::form: return kTableParts.contains(parent);
    case Tag::input: {
        const auto type = tree.attribute(element, AttributeName::type);
        return type && text::equalsIgnoringCase(*type, "hidden");
    }
    case Tag::noembed:
    case Tag::template_: return true;
    default: return false;
    }
}

bool hasFallbackContent(const Tree& tree, NodeId object) {
    for (NodeId child = tree.firstChild(object); child != kNoNode; child = tree.next(child)) {
        const bool isText = tree.node(child).kind == NodeKind::text;
        if (isText ? !text::trimBlanks(tree.text(child)).empty() : tree.node(child).tag != Tag::param) return true;
    }
    return false;
}

bool isMachinery(const Node& element) {
    switch (element.tag) {
    case Tag::script:
    case Tag::style:
    case Tag::template_:
    case Tag::head:
    case Tag::title:
    case Tag::metadata:
    case Tag::noembed:
    case Tag::noframes:
    case Tag::rp:
    case Tag::annotation:
    case Tag::annotationXml: return true;
    default: return false;
    }
}

} // namespace quillow::html
