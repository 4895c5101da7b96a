// The user agent style sheet: HTML Standard, section 15.3, as far as it decides what text is seen and how its lines break.
#pragma once

#include "engines/html/css/Style.h"
#include "engines/html/tree/TagSet.h"
#include "engines/html/tree/Tree.h"

namespace quillow::html {

/// Sets the style of an element, which is the initial one, to what it is before the author's sheets, given its parent's.
void userAgentStyle(const Tree& tree, NodeId element, const Style& parent, Style& style);

/// The display type that an element has by its name alone.
[[nodiscard]] Display defaultDisplay(const Node& element);

/// True for an element that no style shows: 15.3's rules that are marked as important, a template, whose contents are elsewhere, and,
/// as in browsers, the markup in a noembed. `parent` is the element of HTML around it.
[[nodiscard]] bool isNeverShown(const Tree& tree, NodeId element, Tag parent);

/// HTML, 4.8.7: whether an object that cannot be embedded has something to show in its place.
[[nodiscard]] bool hasFallbackContent(const Tree& tree, NodeId object);

/// True for an element that is drawn as one box whatever its children are: its content gives no text.
[[nodiscard]] inline bool isReplaced(const Tree& tree, NodeId element) {
    constexpr TagSet kReplaced{Tag::img,   Tag::image, Tag::input, Tag::textarea, Tag::iframe, Tag::embed,
                               Tag::video, Tag::audio, Tag::meter, Tag::progress, Tag::frame,  Tag::object};
    const Node& node = tree.node(element);
    if (!kReplaced.contains(node.tag) || node.space != Namespace::html) return false;
    return node.tag != Tag::object || !hasFallbackContent(tree, element);
}

/// True for an element whose content is never text for a reader, whatever style says: scripts, styles, templates.
[[nodiscard]] bool isMachinery(const Node& element);

} // namespace quillow::html
