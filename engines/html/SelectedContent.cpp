#include "engines/html/SelectedContent.h"

#include "engines/html/Ascii.h"
#include "engines/html/TagSet.h"

namespace quillow::html {

bool SelectedContent::isHtml(NodeId id, Tag tag) const {
    const Node& node = tree_.node(id);
    return node.kind == NodeKind::element && node.space == Namespace::html && node.tag == tag;
}

/// The node after this one and what is in it, in tree order below `root`; kNoNode at the end.
NodeId SelectedContent::following(NodeId node, NodeId root) const {
    while (node != root && tree_.node(node).isLast())
        node = tree_.parentOfLast(node);
    return node == root ? kNoNode : tree_.node(node).next();
}

/// The nearest select around, or kNoNode where the element is disabled or the select takes several options.
NodeId SelectedContent::selectToEnable(NodeId content) {
    NodeId nearest = kNoNode;
    // 4. For each of its ancestors.
    for (NodeId ancestor = tree_.parent(content); ancestor != kNoNode; ancestor = tree_.parent(ancestor)) {
        ++steps_;
        // 4.1 The first select is the nearest; a second one disables.
        if (isHtml(ancestor, Tag::select)) {
            if (nearest != kNoNode) return kNoNode;
            nearest = ancestor;
        }
        // 4.2 So does an option or another selectedcontent element.
        if (isHtml(ancestor, Tag::option) || isHtml(ancestor, Tag::selectedcontent)) return kNoNode;
    }
    // 5. Without a select, or in one of several options, there is nothing to do.
    return nearest != kNoNode && tree_.attribute(nearest, "multiple") ? kNoNode : nearest;
}

void SelectedContent::contentInserted(NodeId content) {
    const NodeId select = selectToEnable(content);
    if (select == kNoNode || select == select_) return;
    select_ = select;
    content_ = content;
    open_ = selected_ = kNoNode;
    // "The list of options": without what stands in what ends the search for the nearest select.
    for (NodeId node = tree_.firstChild(select); node != kNoNode; ++steps_) {
        const bool isOption = isHtml(node, Tag::option);
        if (isOption && nearestSelect(node) == select) setSelectedness(node);
        const bool closed = isOption || isHtml(node, Tag::select) || isHtml(node, Tag::datalist);
        const NodeId inside = closed ? kNoNode : tree_.firstChild(node);
        node = inside != kNoNode ? inside : following(node, select);
    }
    // 6. "Update a select's selectedcontent".
    if (selected_ != kNoNode) cloneSelected();
}

/// "The option element nearest ancestor select".
NodeId SelectedContent::nearestSelect(NodeId option) {
    bool inGroup = false;
    for (NodeId ancestor = tree_.parent(option); ancestor != kNoNode; ancestor = tree_.parent(ancestor)) {
        ++steps_;
        // 2.1 A datalist or an option between them: none.
        if (isHtml(ancestor, Tag::datalist) || isHtml(ancestor, Tag::option)) return kNoNode;
        // 2.2 Nor is there one for groups in groups.
        if (isHtml(ancestor, Tag::optgroup)) {
            if (inGroup) return kNoNode;
            inGroup = true;
        }
        // 2.3
        if (isHtml(ancestor, Tag::select)) return ancestor;
    }
    return kNoNode;
}

/// 4.10.10: by its own attribute or that of its group.
bool SelectedContent::isDisabled(NodeId option) {
    if (tree_.has(option, AttributeName::disabled)) return true;
    for (NodeId ancestor = tree_.parent(option); ancestor != select_; ancestor = tree_.parent(ancestor)) {
        ++steps_;
        if (isHtml(ancestor, Tag::optgroup)) return tree_.has(ancestor, AttributeName::disabled);
    }
    return false;
}

/// What an option of the select changes: "the selectedness setting algorithm".
void SelectedContent::setSelectedness(NodeId option) {
    // 2. Of several options with the attribute the last one is selected.
    if (tree_.has(option, AttributeName::selected)) {
        selected_ = option;
        return;
    }
    // 1. Where none is, the first that is not disabled, if the display size is 1.
    if (selected_ != kNoNode) return;
    const auto size = tree_.attribute(select_, AttributeName::size);
    if (size && parseInteger(*size).value_or(1) != 1) return;
    if (!isDisabled(option)) selected_ = option;
}

void SelectedContent::optionInserted(NodeId option) {
    if (select_ == kNoNode || nearestSelect(option) != select_) return;
    setSelectedness(option);
    open_ = option;
}

void SelectedContent::optionClosed() {
    if (open_ == selected_) cloneSelected();
    open_ = kNoNode;
}

/// "Clone an option into a selectedcontent".
void SelectedContent::cloneSelected() {
    // 3. In the place of what the element holds. What it holds may be the option.
    steps_ += tree_.removeChildren(content_);
    // 1. and 2. The option's children, with all that is in them.
    NodeId container = content_;
    for (NodeId node = tree_.firstChild(selected_); node != kNoNode; ++steps_) {
        if (tree_.node(node).kind == NodeKind::text) {
            tree_.appendText(container, tree_.text(node));
        } else {
            const NodeId copy = tree_.createClone(node);
            tree_.append(container, copy);
            if (const NodeId inside = tree_.firstChild(node); inside != kNoNode) {
                container = copy;
                node = inside;
                continue;
            }
        }
        while (node != selected_ && tree_.node(node).isLast()) {
            node = tree_.parentOfLast(node);
            container = tree_.parent(container);
        }
        node = node == selected_ ? kNoNode : tree_.node(node).next();
    }
}

} // namespace quillow::html
