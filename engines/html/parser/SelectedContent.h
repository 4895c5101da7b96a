// HTML, 4.10.10 and 4.10.17: the copy of a drop-down's chosen option that tree construction keeps in its selectedcontent element.
#pragma once

#include "engines/html/parser/OpenElement.h"
#include "engines/html/tree/Tree.h"

#include <optional>
#include <span>
#include <utility>

namespace quillow::html {

/// Follows the one select whose selectedcontent element is enabled: an element that stands in a second select is disabled, so
/// there is never more than one. Each option is copied at most once, so that the copies are no more than the document's own nodes.
class SelectedContent {
public:
    explicit SelectedContent(Tree& tree)
        : tree_(tree) {}

    /// "The selectedcontent HTML element post-connection steps". Of several in one select the first to come is the one. It is
    /// the last of the open elements.
    void contentInserted(NodeId content, std::span<const OpenElement> open);
    /// "The option HTML element insertion steps"; the option is the last of the open elements.
    void optionInserted(NodeId option, std::span<const OpenElement> open);
    /// "Maybe clone an option into selectedcontent", when the option that was inserted last is not open any more.
    void optionClosed();
    /// The select is not open any more.
    void selectClosed() { select_ = open_ = selected_ = kNoNode; }

    /// The select that is followed, or kNoNode.
    [[nodiscard]] NodeId select() const { return select_; }
    /// Its option that was inserted last, as long as it is open; or kNoNode.
    [[nodiscard]] NodeId openOption() const { return open_; }

    /// Its selectedcontent element.
    [[nodiscard]] NodeId content() const { return content_; }
    /// The last child, if any, that it has since a copy was made; nothing if none was made since this was asked last. What it
    /// held before is in no tree then.
    [[nodiscard]] std::optional<NodeId> takeCopied() { return std::exchange(copied_, std::nullopt); }

    /// The nodes that were looked at or copied so far.
    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    /// What an option learns from the elements around it.
    struct Surroundings {
        NodeId select = kNoNode; ///< "the option element nearest ancestor select"
        NodeId group = kNoNode;
    };
    [[nodiscard]] NodeId selectToEnable(std::span<const OpenElement> open);
    [[nodiscard]] Surroundings surroundings(std::span<const OpenElement> open);
    void setSelectedness(NodeId option, NodeId group);
    void cloneSelected();

    Tree& tree_;
    NodeId select_ = kNoNode;
    NodeId content_ = kNoNode;
    NodeId open_ = kNoNode;
    NodeId selected_ = kNoNode; ///< the option whose selectedness is true
    std::optional<NodeId> copied_;
    std::uint64_t steps_ = 0;
};

} // namespace quillow::html
