#include "engines/html/HtmlAttributes.h"

#include "engines/html/KeyTable.h"

namespace quillow::html {

namespace {

// In the order of the enumeration.
constexpr std::array<std::string_view, static_cast<std::size_t>(AttributeName::count)> kNames = {
    "",   "checked", "class", "color",   "controls", "disabled", "display", "encoding", "face",  "hidden", "href",
    "id", "media",   "open",  "popover", "reversed", "selected", "size",    "start",    "style", "type",   "value",
};
static_assert(!kNames.back().empty());

constexpr KeyTable<7, kNames.size()> kTable(kNames);

} // namespace

AttributeName attributeNameForKey(const NameKey& key) {
    return static_cast<AttributeName>(kTable.find(key));
}

} // namespace quillow::html
