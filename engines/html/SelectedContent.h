// HTML, 4.10.10 and 4.10.17: the copy of a drop-down's chosen option that tree construction keeps in its selectedcontent element.
#pragma once

#include "engines/html/HtmlTree.h"

namespace quillow::html {

/// Follows the one select whose selectedcontent element is enabled: an element that stands in a second select is disabled, so
/// there is never more than one. Each option is copied at most once, so that the copies are no more than the document's own nodes.
class SelectedContent {
public:
    explicit SelectedContent(HtmlTree& tree)
        : tree_(tree) {}

    /// "The selectedcontent HTML element post-connection steps". Of several in one select the first to come is the one.
    void contentInserted(NodeId content);
    /// "The option HTML element insertion steps"; the option is open now.
    void optionInserted(NodeId option);
    /// "Maybe clone an option into selectedcontent", when the option that was inserted last is not open any more.
    void optionClosed();
    /// The select is not open any more.
    void selectClosed() { select_ = open_ = selected_ = kNoNode; }

    /// The select that is followed, or kNoNode.
    [[nodiscard]] NodeId select() const { return select_; }
    /// Its option that was inserted last, as long as it is open; or kNoNode.
    [[nodiscard]] NodeId openOption() const { return open_; }

    /// The nodes that were looked at, copied or removed so far.
    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    [[nodiscard]] bool isHtml(NodeId id, Tag tag) const;
    [[nodiscard]] NodeId selectToEnable(NodeId content);
    [[nodiscard]] NodeId nearestSelect(NodeId option);
    [[nodiscard]] bool isDisabled(NodeId option);
    [[nodiscard]] NodeId following(NodeId node, NodeId root) const;
    void setSelectedness(NodeId option);
    void cloneSelected();

    HtmlTree& tree_;
    NodeId select_ = kNoNode;
    NodeId content_ = kNoNode;
    NodeId open_ = kNoNode;
    NodeId selected_ = kNoNode; ///< the option whose selectedness is true
    std::uint64_t steps_ = 0;
};

} // namespace quillow::html
