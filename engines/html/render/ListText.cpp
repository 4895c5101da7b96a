#include "engines/html/render/ListText.h"

#include "engines/html/render/ListMarkers.h"
#include "engines/html/tree/ParseInteger.h"

#include <algorithm>
#include <optional>
#include <string>

namespace quillow::html {

namespace {

constexpr std::size_t kIndentPerLevel = 2;
/// Lists that are nested deeper are not indented any further.
constexpr std::size_t kMaxIndentLevels = 16;

std::optional<std::int64_t> integerAttribute(const Tree& tree, NodeId element, AttributeName name) {
    const auto value = tree.attribute(element, name);
    if (!value) return std::nullopt;
    return parseInteger(*value);
}

} // namespace

/// 4.4.5: the first number of a list, and the direction of its numbers.
void ListText::openList(NodeId id) {
    List& list = lists_.emplace_back();
    if (tree_.node(id).tag != Tag::ol) return;
    const auto start = integerAttribute(tree_, id, AttributeName::start);
    if (tree_.attribute(id, AttributeName::reversed)) {
        list.step = -1;
        list.nextNumber = 0;
        for (NodeId child = tree_.firstChild(id); !start && child != kNoNode; child = tree_.next(child))
            if (tree_.node(child).tag == Tag::li) ++list.nextNumber;
    }
    if (start) list.nextNumber = *start;
}

/// 4.4.8: only `li` elements in a list have a number of their own.
std::int64_t ListText::takeNumber(NodeId item) {
    if (tree_.node(item).tag != Tag::li || lists_.empty()) return 1;
    List& list = lists_.back();
    if (const auto value = integerAttribute(tree_, item, AttributeName::value)) list.nextNumber = *value;
    const std::int64_t number = list.nextNumber;
    list.nextNumber += list.step;
    return number;
}

bool ListText::openItem(NodeId item, const Style& style) {
    const std::int64_t number = takeNumber(item);
    if (style.display != Display::listItem || style.visibility != Visibility::visible) return false;
    const std::string marker = listMarker(style.listStyle, number);
    if (marker.empty()) return false;
    markersBefore_.push_back(collector_.heldMarkerBytes());
    if (markersBefore_.back() == 0 && lists_.size() > 1)
        collector_.holdMarker(std::string(kIndentPerLevel * std::min(lists_.size() - 1, kMaxIndentLevels), ' '));
    collector_.holdMarker(marker);
    return true;
}

} // namespace quillow::html
