// The stack of open elements without a tree: scopes, implied end tags, removal, and the neighbours in its entries.
#include "engines/html/parser/OpenElements.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace quillow::html {
namespace {

/// A stack of these elements. The number of each is its index.
OpenElements stackOf(std::initializer_list<Tag> tags) {
    OpenElements open;
    for (const Tag tag : tags)
        open.push({static_cast<NodeId>(open.size()), tag});
    return open;
}

/// The names of the open elements, each with a blank before it.
std::string namesIn(const OpenElements& open) {
    std::string names;
    for (std::size_t i = 0; i < open.size(); ++i)
        names += " " + std::string(tagName(open[i].tag));
    return names;
}

TEST(OpenElements, scopeEndsAtItsElements) {
    const OpenElements open = stackOf({Tag::html, Tag::body, Tag::ul, Tag::button, Tag::p});
    EXPECT_TRUE(open.hasInScope({Tag::p}));
    EXPECT_TRUE(open.hasInScope({Tag::body}));
    EXPECT_FALSE(open.hasInScope({Tag::body}, Scope::button));
    EXPECT_FALSE(open.hasInScope({Tag::body}, Scope::listItem));
    EXPECT_TRUE(open.hasInScope({Tag::body}, Scope::table));
    EXPECT_FALSE(open.hasInScope({Tag::div}));
}

TEST(OpenElements, everyScopeEndsAtATable) {
    const OpenElements open = stackOf({Tag::html, Tag::body, Tag::p, Tag::table, Tag::tr});
    for (const Scope scope : {Scope::standard, Scope::listItem, Scope::button, Scope::table})
        EXPECT_FALSE(open.hasInScope({Tag::p}, scope));
    EXPECT_TRUE(open.hasInScope({Tag::table}, Scope::table));
}

TEST(OpenElements, foreignElementsEndOnlySomeScopes) {
    OpenElements open = stackOf({Tag::html, Tag::p});
    open.push({2, Tag::title, Namespace::svg});
    EXPECT_FALSE(open.hasInScope({Tag::p}));
    EXPECT_FALSE(open.hasInScope({Tag::title}));
    EXPECT_TRUE(open.hasInScope({Tag::p}, Scope::table));
    EXPECT_FALSE(open.isOpen(Tag::title));
    EXPECT_FALSE(open.currentIs(Tag::title));
}

TEST(OpenElements, anElementIsInScopeIfNoneBelowEndsIt) {
    const OpenElements open = stackOf({Tag::html, Tag::b, Tag::td, Tag::i, Tag::u});
    EXPECT_FALSE(open.isInScope(1));
    EXPECT_TRUE(open.isInScope(2));
    EXPECT_TRUE(open.isInScope(4));
}

TEST(OpenElements, furthestBlockIsTheTopmostSpecialElementBelow) {
    const OpenElements open = stackOf({Tag::html, Tag::b, Tag::i, Tag::div, Tag::p});
    EXPECT_EQ(open.furthestBlock(1), 3U);
    EXPECT_EQ(open.furthestBlock(3), 4U);
    EXPECT_EQ(open.furthestBlock(4), OpenElements::kNotOpen);
}

TEST(OpenElements, popUntilStopsBehindTheElement) {
    OpenElements open = stackOf({Tag::html, Tag::div, Tag::div, Tag::b});
    open.popUntil({Tag::div});
    EXPECT_EQ(namesIn(open), " html div");
}

TEST(OpenElements, popUntilKeepsTheHtmlElement) {
    OpenElements open = stackOf({Tag::html, Tag::body});
    open.popUntil({Tag::table});
    EXPECT_EQ(namesIn(open), " html");
}

TEST(OpenElements, clearBackToStopsAtTheContextOrATemplate) {
    OpenElements rows = stackOf({Tag::html, Tag::table, Tag::tbody, Tag::tr, Tag::td});
    rows.clearBackTo(kTableSections);
    EXPECT_EQ(namesIn(rows), " html table tbody");
    OpenElements inTemplate = stackOf({Tag::html, Tag::table, Tag::template_, Tag::td});
    inTemplate.clearBackTo({Tag::table});
    EXPECT_EQ(namesIn(inTemplate), " html table template");
}

TEST(OpenElements, impliedEndTagsCloseAllButTheException) {
    OpenElements open = stackOf({Tag::html, Tag::td, Tag::li, Tag::p, Tag::option});
    open.generateImpliedEndTags(Tag::li);
    EXPECT_EQ(namesIn(open), " html td li");
    open.generateImpliedEndTags();
    EXPECT_EQ(namesIn(open), " html td");
    open.generateAllImpliedEndTags();
    EXPECT_EQ(namesIn(open), " html");
}

TEST(OpenElements, paragraphClosesOnlyInButtonScope) {
    OpenElements open = stackOf({Tag::html, Tag::p, Tag::button, Tag::b});
    open.closeParagraphInButtonScope();
    EXPECT_EQ(namesIn(open), " html p button b");
    open.popTo(2);
    open.closeParagraphInButtonScope();
    EXPECT_EQ(namesIn(open), " html");
}

TEST(OpenElements, paragraphsAreCountedHoweverTheyLeave) {
    OpenElements open = stackOf({Tag::html, Tag::p, Tag::p, Tag::p, Tag::p});
    open.remove(1);
    open.removeAt(1);
    open.pop();
    EXPECT_TRUE(open.hasParagraphInButtonScope());
    open.popTo(1);
    const std::uint64_t steps = open.steps();
    EXPECT_FALSE(open.hasParagraphInButtonScope());
    EXPECT_EQ(open.steps(), steps);
    open.insert(1, {7, Tag::p});
    EXPECT_TRUE(open.hasParagraphInButtonScope());
}

TEST(OpenElements, withoutParagraphsNothingIsSearched) {
    const OpenElements open = stackOf({Tag::html, Tag::div, Tag::div});
    EXPECT_FALSE(open.hasParagraphInButtonScope());
    EXPECT_EQ(open.steps(), 0U);
}

TEST(OpenElements, removalLeavesTheOthersInOrder) {
    OpenElements open = stackOf({Tag::html, Tag::b, Tag::i, Tag::u});
    open.remove(2);
    open.remove(9);
    EXPECT_EQ(namesIn(open), " html b u");
    EXPECT_EQ(open.find(3), 2U);
    EXPECT_FALSE(open.isOpen(NodeId{2}));
}

TEST(OpenElements, aRememberedIndexIsUpdated) {
    OpenElements open = stackOf({Tag::html, Tag::b, Tag::i});
    std::size_t index = 2;
    EXPECT_TRUE(open.isStillOpen(2, index));
    EXPECT_EQ(open.steps(), 0U);
    open.remove(1);
    EXPECT_TRUE(open.isStillOpen(2, index));
    EXPECT_EQ(index, 1U);
    open.pop();
    EXPECT_FALSE(open.isStillOpen(2, index));
    EXPECT_EQ(index, OpenElements::kNotOpen);
}

TEST(OpenElements, unlinkClosesTheGapBetweenNeighbours) {
    OpenElements open;
    open.push({1, Tag::html, Namespace::html, kNoNode, kNoNode, 4});
    open.push({4, Tag::b, Namespace::html, 1, 3, kNoNode});
    open.push({5, Tag::i, Namespace::html, 1, 4, kNoNode});
    open.unlink(open[1]);
    EXPECT_EQ(open[0].lastChild, 3U);
    EXPECT_EQ(open[2].previous, 3U);
}

TEST(OpenElements, changeParentFindsTheChildrenBelowAnIndex) {
    OpenElements open;
    open.push({1, Tag::html, Namespace::html, 9, 8});
    open.push({2, Tag::b, Namespace::html, 9, 8});
    open.push({3, Tag::i, Namespace::html, 2, 8});
    open.changeParent(1, 9, 7);
    EXPECT_EQ(open[0].parent, 9U);
    EXPECT_EQ(open[1].parent, 7U);
    EXPECT_EQ(open[1].previous, 8U);
    EXPECT_EQ(open[2].parent, 2U);
    open.changeParent(1, 7, kNoNode);
    EXPECT_EQ(open[1].parent, kNoNode);
    EXPECT_EQ(open[1].previous, kNoNode);
}

TEST(OpenElements, searchesAreCounted) {
    const OpenElements open = stackOf({Tag::html, Tag::b, Tag::i});
    EXPECT_TRUE(open.isOpen(Tag::i));
    EXPECT_EQ(open.steps(), 1U);
    EXPECT_EQ(open.find(0), 0U);
    EXPECT_EQ(open.steps(), 4U);
}

} // namespace
} // namespace quillow::html
