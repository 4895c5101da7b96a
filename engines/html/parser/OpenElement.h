// An entry of the stack of open elements.
#pragma once

#include "engines/html/tree/NodeBlock.h"

namespace quillow::html {

/// An open element and its neighbours. The tree's nodes do not store all of these links. Each number is the one
/// under which the node was created (see Tree::resolved).
struct OpenElement {
    NodeId id = kNoNode;
    Tag tag = Tag::unknown;
    Namespace space = Namespace::html;
    NodeId parent = kNoNode;    ///< kNoNode if it has been removed from the tree
    NodeId previous = kNoNode;  ///< previous sibling
    NodeId lastChild = kNoNode; ///< last child so far
};

} // namespace quillow::html
