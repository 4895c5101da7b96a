#include "engines/html/parser/NodeInserter.h"

namespace quillow::html {

InsertionPlace NodeInserter::fosterPlace(OpenElement& target) {
    if (target.space != Namespace::html || !kTableContext.contains(target.tag)) return InsertionPlace::endOf(target);
    for (std::size_t i = open_.size(); i-- > 0;) {
        ++steps_;
        if (open_[i].space != Namespace::html) continue;
        if (open_[i].tag == Tag::template_) return InsertionPlace::endOf(open_[i]);
        if (open_[i].tag != Tag::table) continue;
        if (open_[i].parent != kNoNode) return InsertionPlace::before(open_[i]);
        return InsertionPlace::endOf(open_[i - 1]); // the table was removed from the tree
    }
    return InsertionPlace::endOf(open_[0]);
}

OpenElement NodeInserter::insert(const InsertionPlace& place, OpenElement node) {
    node.parent = place.parent();
    node.previous = place.previous();
    tree_.insert(node.parent, node.previous, node.id);
    place.fill(node.id);
    return node;
}

} // namespace quillow::html
