#include "engines/html/tree/Attributes.h"

namespace quillow::html {

namespace {

// In the order of AttributeName.
constexpr std::array<std::string_view, static_cast<std::size_t>(AttributeName::count)> kNames = {
    "",         "align",    "checked",  "class", "color", "controls", "disabled", "display",
    "encoding", "face",     "hidden",   "href",  "id",    "media",    "nowrap",   "open",
    "popover",  "reversed", "selected", "size",  "start", "style",    "type",     "value",
};
static_assert(!kNames.back().empty());

} // namespace

constexpr KeyTable<7, kNames.size()> kAttributeTable(kNames);

std::string_view attributeName(AttributeName known) {
    return kNames[static_cast<std::size_t>(known)];
}

} // namespace quillow::html
