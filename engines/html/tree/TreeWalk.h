// A way through a tree in document order. The tree's nodes do not know their parents; the walk remembers those that it is in.
#pragma once

#include "engines/html/tree/Tree.h"

#include <span>
#include <vector>

namespace quillow::html {

/// Visits what is below a root, which is not visited itself. The tree may grow meanwhile, elsewhere.
class TreeWalk {
public:
    TreeWalk(const Tree& tree, NodeId root)
        : tree_(tree)
        , path_{root}
        , node_(tree.firstChild(root)) {}

    /// The node that the walk is at, or kNoNode at its end.
    [[nodiscard]] NodeId node() const { return node_; }
    /// The elements that it is in, from the root to its parent. Empty at the end.
    [[nodiscard]] std::span<const NodeId> ancestors() const { return path_; }

    /// Goes on to the node that comes next in document order.
    void advance() {
        const NodeId child = tree_.firstChild(node_);
        if (child == kNoNode) return advanceOver();
        path_.push_back(node_);
        node_ = child;
    }
    /// The same, leaving out what is in the node.
    void advanceOver() {
        node_ = tree_.next(node_);
        while (node_ == kNoNode) {
            const NodeId parent = path_.back();
            path_.pop_back();
            if (path_.empty()) return;
            node_ = tree_.next(parent);
        }
    }

private:
    const Tree& tree_;
    std::vector<NodeId> path_;
    NodeId node_;
};

} // namespace quillow::html
