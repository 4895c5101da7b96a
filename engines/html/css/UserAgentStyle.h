// The user agent style sheet: HTML Standard, section 15.3, as far as it decides what text is seen and
// how its lines break.
#pragma once

#include "engines/html/css/Style.h"
#include "engines/html/tree/TagSet.h"
#include "engines/html/tree/Tree.h"

namespace quillow::html {

/// Applies the user agent style sheet to an element's style, before the author's sheets. `style` must be the
/// initial style; `parent` is the parent's.
void userAgentStyle(const Tree& tree, NodeId element, const Style& parent, Style& style);

/// The display type that an element has by its name alone; block for elements that are hidden by their name.
[[nodiscard]] Display defaultDisplay(const Node& element);

/// Whether an element is never shown, whatever the style says: by the rules of 15.3 that are marked as important,
/// as a template, whose contents are elsewhere, or, as in browsers, as a noembed. `parent` is the tag of the parent
/// if that is an HTML element.
[[nodiscard]] bool isNeverShown(const Tree& tree, NodeId element, Tag parent);

/// HTML, 4.8.7: whether an object that cannot be embedded has something to show in its place.
[[nodiscard]] bool hasFallbackContent(const Tree& tree, NodeId object);

/// Whether an element is drawn as one box whatever its children are, so that its content gives no text.
[[nodiscard]] inline bool isReplaced(const Tree& tree, NodeId element) {
    constexpr TagSet kReplaced{Tag::img,   Tag::image, Tag::input, Tag::textarea, Tag::iframe, Tag::embed,
                               Tag::video, Tag::audio, Tag::meter, Tag::progress, Tag::frame,  Tag::object};
    const Node& node = tree.node(element);
    if (!kReplaced.contains(node.tag) || node.space != Namespace::html) return false;
    return node.tag != Tag::object || !hasFallbackContent(tree, element);
}

/// Whether an element's content is never text for a reader, whatever the style says: scripts, styles, templates.
[[nodiscard]] bool isMachinery(const Node& element);

} // namespace quillow::html
