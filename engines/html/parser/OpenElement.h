// An entry of the stack of open elements.
#pragma once

#include "engines/html/tree/NodeBlock.h"

namespace quillow::html {

/// An open element and its neighbours, of which the tree's nodes do not know all. Numbers are those under which nodes were created.
struct OpenElement {
    NodeId id = kNoNode;
    Tag tag = Tag::unknown;
    Namespace space = Namespace::html;
    NodeId parent = kNoNode;    ///< kNoNode where it has been taken out of the tree
    NodeId previous = kNoNode;  ///< the sibling before it
    NodeId lastChild = kNoNode; ///< so far
};

} // namespace quillow::html
