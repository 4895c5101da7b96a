#include "engines/html/HtmlTags.h"

#include <array>
#include <cstddef>

namespace quillow::html {

namespace {

constexpr std::size_t kTagCount = static_cast<std::size_t>(Tag::count);

// In the order of the enumeration.
constexpr std::array<std::string_view, kTagCount> kNames = {
    "",
    "a",
    "abbr",
    "acronym",
    "address",
    "annotation",
    "annotation-xml",
    "applet",
    "area",
    "article",
    "aside",
    "audio",
    "b",
    "base",
    "basefont",
    "bdi",
    "bdo",
    "bgsound",
    "big",
    "blink",
    "blockquote",
    "body",
    "br",
    "button",
    "canvas",
    "caption",
    "center",
    "cite",
    "code",
    "col",
    "colgroup",
    "data",
    "datalist",
    "dd",
    "del",
    "desc",
    "details",
    "dfn",
    "dialog",
    "dir",
    "div",
    "dl",
    "dt",
    "em",
    "embed",
    "fencedframe",
    "fieldset",
    "figcaption",
    "figure",
    "font",
    "footer",
    "foreignobject",
    "form",
    "frame",
    "frameset",
    "g",
    "h1",
    "h2",
    "h3",
    "h4",
    "h5",
    "h6",
    "head",
    "header",
    "hgroup",
    "hr",
    "html",
    "i",
    "iframe",
    "image",
    "img",
    "input",
    "ins",
    "kbd",
    "keygen",
    "label",
    "legend",
    "li",
    "link",
    "listing",
    "main",
    "malignmark",
    "map",
    "mark",
    "marquee",
    "math",
    "menu",
    "menuitem",
    "meta",
    "metadata",
    "meter",
    "mglyph",
    "mi",
    "mn",
    "mo",
    "mphantom",
    "ms",
    "mtable",
    "mtd",
    "mtext",
    "mtr",
    "nav",
    "nobr",
    "noembed",
    "noframes",
    "noscript",
    "object",
    "ol",
    "optgroup",
    "option",
    "output",
    "p",
    "param",
    "picture",
    "plaintext",
    "pre",
    "progress",
    "q",
    "rb",
    "rp",
    "rt",
    "rtc",
    "ruby",
    "s",
    "samp",
    "script",
    "search",
    "section",
    "select",
    "semantics",
    "slot",
    "small",
    "source",
    "span",
    "strike",
    "strong",
    "style",
    "sub",
    "summary",
    "sup",
    "svg",
    "switch",
    "symbol",
    "table",
    "tbody",
    "td",
    "template",
    "text",
    "textpath",
    "textarea",
    "tfoot",
    "th",
    "thead",
    "time",
    "title",
    "tr",
    "track",
    "tspan",
    "tt",
    "u",
    "ul",
    "var",
    "video",
    "wbr",
    "xmp",
};
static_assert(!kNames.back().empty());

// A hash table made at compile time, open addressing, never more than a third full.
constexpr std::size_t kSlots = 1024;

constexpr std::size_t slotOf(std::string_view name) {
    std::size_t hash = name.size();
    for (const char c : name)
        hash = hash * 31 + static_cast<unsigned char>(c);
    return (hash ^ (hash >> 10)) % kSlots;
}

constexpr std::array<std::uint8_t, kSlots> makeTable() {
    std::array<std::uint8_t, kSlots> table{};
    for (std::size_t tag = 1; tag < kTagCount; ++tag) {
        std::size_t slot = slotOf(kNames[tag]);
        while (table[slot] != 0)
            slot = (slot + 1) % kSlots;
        table[slot] = static_cast<std::uint8_t>(tag);
    }
    return table;
}

constexpr std::array<std::uint8_t, kSlots> kTable = makeTable();

} // namespace

Tag tagForName(std::string_view name) {
    if (name.size() > 16) return Tag::unknown;
    for (std::size_t slot = slotOf(name); kTable[slot] != 0; slot = (slot + 1) % kSlots)
        if (kNames[kTable[slot]] == name) return static_cast<Tag>(kTable[slot]);
    return Tag::unknown;
}

std::string_view tagName(Tag tag) {
    return kNames[static_cast<std::size_t>(tag)];
}

} // namespace quillow::html
