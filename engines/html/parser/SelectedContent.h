// HTML, 4.10.10 and 4.10.17: the copy of a drop-down's selected option that tree construction keeps in its
// selectedcontent element.
#pragma once

#include "engines/html/parser/OpenElement.h"
#include "engines/html/tree/Tree.h"

#include <optional>
#include <span>
#include <utility>

namespace quillow::html {

/// Follows the one select whose selectedcontent element is enabled. A selectedcontent element inside of two selects
/// is disabled, so there is never more than one at a time. Each option is copied at most once, so that there are
/// never more copies than nodes of the document.
class SelectedContent {
public:
    explicit SelectedContent(Tree& tree)
        : tree_(tree) {}

    /// "The selectedcontent HTML element post-connection steps". `content` is the last of the open elements. If a
    /// select has several of these elements, the first one counts.
    void contentInserted(NodeId content, std::span<const OpenElement> open);
    /// "The option HTML element insertion steps". `option` is the last of the open elements.
    void optionInserted(NodeId option, std::span<const OpenElement> open);
    /// "Maybe clone an option into selectedcontent": the option that was inserted last is no longer open.
    void optionClosed();
    /// The select is no longer open.
    void selectClosed() { select_ = open_ = selected_ = kNoNode; }

    /// The select that is followed, or kNoNode.
    [[nodiscard]] NodeId select() const { return select_; }
    /// The option of this select that was inserted last, while it is open; else kNoNode.
    [[nodiscard]] NodeId openOption() const { return open_; }

    /// The selectedcontent element of this select.
    [[nodiscard]] NodeId content() const { return content_; }
    /// The last child (kNoNode if there is none) of the selectedcontent element after a copy was made; std::nullopt
    /// if none was made since the last call. The element's former children are no longer in the tree.
    [[nodiscard]] std::optional<NodeId> takeCopied() { return std::exchange(copied_, std::nullopt); }

    /// The number of nodes examined or copied so far.
    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    /// The elements around an option that matter for it.
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
    NodeId selected_ = kNoNode; ///< the option whose selectedness is true, or kNoNode
    std::optional<NodeId> copied_;
    std::uint64_t steps_ = 0;
};

} // namespace quillow::html
