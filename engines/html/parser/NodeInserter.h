// Inserts nodes into the tree: section 13.2.6.1 of the HTML Standard, with foster parenting.
#pragma once

#include "engines/html/parser/OpenElements.h"
#include "engines/html/tree/Tree.h"

#include <cstdint>
#include <string_view>

namespace quillow::html {

/// Where a node is inserted: as the last child of an open element, or before an open table. Valid until the stack of
/// open elements changes.
class InsertionPlace {
public:
    [[nodiscard]] static InsertionPlace endOf(OpenElement& parent) { return {parent, false}; }
    [[nodiscard]] static InsertionPlace before(OpenElement& table) { return {table, true}; }

    [[nodiscard]] bool isBeforeTable() const { return isBefore_; }
    [[nodiscard]] NodeId parent() const { return isBefore_ ? element_.parent : element_.id; }
    /// The sibling before the place, or kNoNode.
    [[nodiscard]] NodeId previous() const { return isBefore_ ? element_.previous : element_.lastChild; }
    /// Records that the inserted node is now the sibling before the place.
    void fill(NodeId inserted) const { (isBefore_ ? element_.previous : element_.lastChild) = inserted; }

private:
    InsertionPlace(OpenElement& element, bool isBefore)
        : element_(element)
        , isBefore_(isBefore) {}

    OpenElement& element_;
    bool isBefore_;
};

class NodeInserter {
public:
    /// `tree` and `open` must outlive the object.
    NodeInserter(Tree& tree, OpenElements& open)
        : tree_(tree)
        , open_(open) {}

    /// "Foster parenting": nodes that are not allowed in a table go before it.
    [[nodiscard]] bool fosters() const { return fosters_; }
    void setFosters(bool fosters) { fosters_ = fosters; }

    /// "The appropriate place for inserting a node", with the current node as target.
    [[nodiscard]] InsertionPlace appropriatePlace() {
        return fosters_ ? fosterPlace(open_.current()) : InsertionPlace::endOf(open_.current());
    }
    /// The appropriate place with foster parenting, whether it is enabled or not.
    [[nodiscard]] InsertionPlace fosterPlace(OpenElement& target);

    /// Inserts a node that is not in the tree. Returns its entry for the stack, with its neighbours.
    OpenElement insert(const InsertionPlace& place, OpenElement node);

    /// The number of open elements examined so far.
    [[nodiscard]] std::uint64_t steps() const { return steps_; }

private:
    Tree& tree_;
    OpenElements& open_;
    bool fosters_ = false;
    std::uint64_t steps_ = 0;
};

} // namespace quillow::html
