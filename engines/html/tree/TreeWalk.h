// A walk through a tree in document order. Nodes do not know their parents, so the walk keeps the path to its node.
#pragma once

#include "engines/html/tree/Tree.h"

#include <span>
#include <vector>

namespace quillow::html {

/// Visits the descendants of a root, but not the root itself. Meanwhile the tree may grow, but not below the root.
class TreeWalk {
public:
    TreeWalk(const Tree& tree, NodeId root)
        : tree_(tree)
        , path_{root}
        , node_(tree.firstChild(root)) {}

    /// The current node, or kNoNode at the end.
    [[nodiscard]] NodeId node() const { return node_; }
    /// The ancestors of the current node, from the root to its parent. Not meaningful at the end.
    [[nodiscard]] std::span<const NodeId> ancestors() const { return path_; }

    /// Moves to the next node in document order.
    void advance() {
        const NodeId child = tree_.firstChild(node_);
        if (child == kNoNode) return advanceOver();
        path_.push_back(node_);
        node_ = child;
    }
    /// Moves to the next node in document order that is not a descendant of the current one.
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
