// HTML, 4.10.10 and 4.10.17: the copy of a drop-down's selected option that tree construction keeps in its
// selectedcontent element.
#pragma once

#include "engines/html/parser/OpenElements.h"
#include "engines/html/tree/Tree.h"

#include <cstdint>

namespace quillow::html {

/// Follows the one select whose selectedcontent element is enabled. A selectedcontent element inside of two selects
/// is disabled, so there is never more than one at a time. Each option is copied at most once, so that there are
/// never more copies than nodes of the document.
class SelectedContent {
public:
    /// Both arguments must outlive this object. After each copy it updates the entries of the open elements.
    SelectedContent(Tree& tree, OpenElements& openElements)
        : tree_(tree)
        , openElements_(openElements) {}

    /// "The selectedcontent HTML element post-connection steps" for the current node. If a select has several of
    /// these elements, the first one counts.
    void contentInserted();
    /// "The option HTML element insertion steps" for the current node.
    void optionInserted();
    /// 4.10.10: "When an option element is popped off the stack of open elements, [...] run maybe clone an option
    /// into selectedcontent". Called between tokens, and between the end of one option and the start of the next.
    void noteClosedElements() {
        if (select_ != kNoNode) endOption();
    }

    /// The number of nodes examined or copied so far.
    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    /// The elements around an option that matter for it.
    struct Surroundings {
        NodeId select = kNoNode; ///< "the option element nearest ancestor select"
        NodeId group = kNoNode;
    };
    [[nodiscard]] NodeId selectToEnable();
    [[nodiscard]] Surroundings surroundings();
    void setSelectedness(NodeId option, NodeId group);
    void endOption();
    void cloneSelected();
    void noteCopy(NodeId lastChild);

    Tree& tree_;
    OpenElements& openElements_;
    NodeId select_ = kNoNode;     ///< the select that is followed, or kNoNode
    NodeId content_ = kNoNode;    ///< its selectedcontent element
    NodeId openOption_ = kNoNode; ///< its option that was inserted last, while that is open
    NodeId selected_ = kNoNode;   ///< the option whose selectedness is true, or kNoNode
    // The indexes of these elements in the stack when they were last searched for.
    std::size_t selectIndex_ = 0;
    std::size_t optionIndex_ = 0;
    std::size_t contentIndex_ = OpenElements::kNotOpen; ///< kNotOpen once it has been closed
    std::uint64_t steps_ = 0;
};

} // namespace quillow::html
