#include "engines/html/parser/SelectedContent.h"

#include "engines/html/tree/ParseInteger.h"
#include "engines/html/tree/TagSet.h"
#include "engines/html/tree/TreeWalk.h"
#include "text/Ascii.h"

namespace quillow::html {

namespace {

bool isHtml(const Node& node, Tag tag) {
    return node.kind == NodeKind::element && node.space == Namespace::html && node.tag == tag;
}

bool isHtml(const OpenElement& element, Tag tag) {
    return element.space == Namespace::html && element.tag == tag;
}

} // namespace

/// The nearest select around the current node. kNoNode if the current node is disabled or if the select allows several
/// options.
NodeId SelectedContent::selectToEnable() {
    NodeId nearest = kNoNode;
    // 4. For each ancestor.
    for (std::size_t i = openElements_.size(); i-- > 1 && openElements_[i].parent != kNoNode;) {
        ++steps_;
        const OpenElement& ancestor = openElements_[i - 1];
        // 4.1 The first select is the nearest one; a second one disables the element.
        if (isHtml(ancestor, Tag::select)) {
            if (nearest != kNoNode) return kNoNode;
            nearest = ancestor.id;
        }
        // 4.2 So does an option or another selectedcontent element.
        if (isHtml(ancestor, Tag::option) || isHtml(ancestor, Tag::selectedcontent)) return kNoNode;
    }
    // 5. Nothing to do without a select, or in a select of several options.
    return nearest != kNoNode && tree_.attribute(nearest, "multiple") ? kNoNode : nearest;
}

void SelectedContent::contentInserted() {
    const NodeId select = selectToEnable();
    if (select == kNoNode || select == select_) return;
    select_ = select;
    content_ = openElements_.current().id;
    contentIndex_ = openElements_.size() - 1;
    openOption_ = selected_ = kNoNode;
    // "The list of options". Options in another option, select or datalist, or in nested groups, do not belong to
    // it: the search for their nearest select ends there.
    const auto isGroup = [this](NodeId id) { return isHtml(tree_.node(id), Tag::optgroup); };
    for (TreeWalk walk(tree_, select); walk.node() != kNoNode; ++steps_) {
        const Node& node = tree_.node(walk.node());
        NodeId group = kNoNode;
        if (isHtml(node, Tag::option) || isHtml(node, Tag::optgroup)) {
            const auto found = std::find_if(walk.ancestors().rbegin(), walk.ancestors().rend(), isGroup);
            if (found != walk.ancestors().rend()) group = *found;
            steps_ += walk.ancestors().size();
        }
        const bool isOption = isHtml(node, Tag::option);
        if (isOption) setSelectedness(walk.node(), group);
        const bool closed = isOption || isHtml(node, Tag::select) || isHtml(node, Tag::datalist) ||
                            (isHtml(node, Tag::optgroup) && group != kNoNode);
        closed ? walk.advanceOver() : walk.advance();
    }
    // 6. "Update a select's selectedcontent".
    if (selected_ != kNoNode) cloneSelected();
}

/// "The option element nearest ancestor select" of the current node, and the option's group.
SelectedContent::Surroundings SelectedContent::surroundings() {
    Surroundings found;
    for (std::size_t i = openElements_.size(); i-- > 1 && openElements_[i].parent != kNoNode;) {
        ++steps_;
        const OpenElement& ancestor = openElements_[i - 1];
        // 2.1 None if a datalist or an option is between them.
        if (isHtml(ancestor, Tag::datalist) || isHtml(ancestor, Tag::option)) return {};
        // 2.2 None if there are nested groups.
        if (isHtml(ancestor, Tag::optgroup)) {
            if (found.group != kNoNode) return {};
            found.group = ancestor.id;
        }
        // 2.3 The select.
        if (isHtml(ancestor, Tag::select)) {
            found.select = ancestor.id;
            return found;
        }
    }
    return {};
}

/// "The selectedness setting algorithm", for one more option of the select.
void SelectedContent::setSelectedness(NodeId option, NodeId group) {
    // 2. If several options have the attribute, the last one is selected.
    if (tree_.has(option, AttributeName::selected)) {
        selected_ = option;
        return;
    }
    // 1. If none has it and the display size is 1, the first option that is not disabled is selected. An option is
    // disabled by its own attribute or by that of its group.
    if (selected_ != kNoNode) return;
    const auto size = tree_.attribute(select_, AttributeName::size);
    if (size && parseInteger(*size).value_or(1) != 1) return;
    const bool groupDisabled = group != kNoNode && tree_.has(tree_.resolved(group), AttributeName::disabled);
    if (!groupDisabled && !tree_.has(option, AttributeName::disabled)) selected_ = option;
}

void SelectedContent::optionInserted() {
    if (select_ == kNoNode) return;
    const Surroundings around = surroundings();
    if (around.select != select_) return;
    openOption_ = openElements_.current().id;
    optionIndex_ = openElements_.size() - 1;
    setSelectedness(openOption_, around.group);
}

/// "Maybe clone an option into selectedcontent", if the option that was inserted last is no longer open.
void SelectedContent::endOption() {
    if (openOption_ != kNoNode && !openElements_.isStillOpen(openOption_, optionIndex_)) {
        if (openOption_ == selected_) cloneSelected();
        openOption_ = kNoNode;
    }
    if (!openElements_.isStillOpen(select_, selectIndex_)) select_ = openOption_ = selected_ = kNoNode;
}

/// "Clone an option into a selectedcontent".
void SelectedContent::cloneSelected() {
    // 3. The copies replace the element's children. The option may be among them.
    tree_.removeChildren(content_);
    struct Copy {
        NodeId id;
        NodeId lastChild;
    };
    // 1. and 2. The option's descendants.
    std::vector<Copy> copies{{content_, kNoNode}};
    for (TreeWalk walk(tree_, selected_); walk.node() != kNoNode; ++steps_) {
        copies.resize(walk.ancestors().size(), {kNoNode, kNoNode});
        Copy& parent = copies.back();
        const NodeId node = walk.node();
        if (tree_.node(node).kind == NodeKind::text) {
            parent.lastChild = tree_.appendText(parent.id, parent.lastChild, tree_.text(node));
        } else {
            const NodeId copy = tree_.appendClone(parent.id, parent.lastChild, node);
            parent.lastChild = copy;
            copies.push_back({copy, kNoNode});
        }
        walk.advance();
    }
    noteCopy(copies.front().lastChild);
}

/// After a copy, the former children of the selectedcontent element are no longer in the tree. If the element is
/// still open, the entries of the stack are updated: its last child, and the parent of open former children.
void SelectedContent::noteCopy(NodeId lastChild) {
    if (contentIndex_ == OpenElements::kNotOpen || !openElements_.isStillOpen(content_, contentIndex_)) return;
    openElements_[contentIndex_].lastChild = lastChild;
    openElements_.changeParent(contentIndex_ + 1, content_, kNoNode);
}

} // namespace quillow::html
