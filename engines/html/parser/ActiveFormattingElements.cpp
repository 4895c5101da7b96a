#include "engines/html/parser/ActiveFormattingElements.h"

#include <algorithm>

namespace quillow::html {

/// Whether two elements count as equal for the Noah's Ark clause: same name and same attributes. (All are
/// HTML elements.) If there are many attributes, their order must be the same too.
bool ActiveFormattingElements::areEqual(NodeId one, NodeId other) const {
    one = tree_.resolved(one);
    other = tree_.resolved(other);
    const auto left = tree_.attributes(one);
    const auto right = tree_.attributes(other);
    if (tree_.text(one) != tree_.text(other) || left.size() != right.size()) return false;
    const auto same = [this](const Attribute& x, const Attribute& y) {
        ++steps_;
        return x.hasNameOf(y) && x.value() == y.value();
    };
    if (left.size() > kMaxUnorderedAttributes) return std::equal(left.begin(), left.end(), right.begin(), same);
    return std::is_permutation(left.begin(), left.end(), right.begin(), same);
}

void ActiveFormattingElements::push(NodeId element) {
    std::size_t equal = 0;
    std::size_t earliestEqual = kNotListed;
    std::size_t sinceMarker = 0;
    for (std::size_t i = entries_.size(); i-- > 0 && !entries_[i].isMarker();) {
        ++sinceMarker;
        if (!areEqual(entries_[i].id, element)) continue;
        ++equal;
        earliestEqual = i;
    }
    if (equal >= kMaxEqualFormatting) {
        removeAt(earliestEqual);
    } else if (sinceMarker >= kMaxActiveFormatting) {
        removeAt(entries_.size() - sinceMarker);
    }
    steps_ += sinceMarker;
    entries_.push_back({element, tree_.node(tree_.resolved(element)).tag});
}

void ActiveFormattingElements::clearToMarker() {
    while (!entries_.empty()) {
        const bool marker = entries_.back().isMarker();
        entries_.pop_back();
        if (marker) return;
    }
}

std::size_t ActiveFormattingElements::find(NodeId id) const {
    for (std::size_t i = entries_.size(); i-- > 0; ++steps_)
        if (entries_[i].id == id) return i;
    return kNotListed;
}

std::size_t ActiveFormattingElements::findLast(Tag tag) const {
    for (std::size_t i = entries_.size(); i-- > 0 && !entries_[i].isMarker(); ++steps_)
        if (entries_[i].tag == tag) return i;
    return kNotListed;
}

void ActiveFormattingElements::remove(NodeId id) {
    if (const std::size_t index = find(id); index != kNotListed) removeAt(index);
}

} // namespace quillow::html
