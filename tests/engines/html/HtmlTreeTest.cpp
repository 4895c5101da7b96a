// The tree's links and strings, made by hand: what tree construction does to them one after the other is seen in its own tests.
#include "engines/html/HtmlTree.h"

#include "tests/engines/html/HtmlTestSupport.h"

#include <gtest/gtest.h>

namespace quillow::html {
namespace {

class HtmlTreeLinks : public testing::Test {
protected:
    NodeId element(Tag tag) { return tree_.createElement(tag, tagName(tag), Namespace::html, {}); }
    NodeId appended(NodeId parent, Tag tag) {
        const NodeId child = element(tag);
        tree_.append(parent, child);
        return child;
    }
    /// The tree in one line, the same from back to front, and each child's parent as it is.
    std::string checkedTree() {
        EXPECT_TRUE(linksAgree(HtmlTree::kDocument));
        return treeOf(tree_);
    }
    // NOLINTNEXTLINE(misc-no-recursion): a tree of a few nodes
    testing::AssertionResult linksAgree(NodeId parent) {
        NodeId before = kNoNode;
        for (NodeId child = tree_.firstChild(parent); child != kNoNode; child = tree_.node(child).next()) {
            if (tree_.previous(child) != before) return testing::AssertionFailure() << "previous of " << child;
            if (tree_.parent(child) != parent) return testing::AssertionFailure() << "parent of " << child;
            if (auto inside = linksAgree(child); !inside) return inside;
            if (tree_.node(child).isLast() && tree_.parentOfLast(child) != parent)
                return testing::AssertionFailure() << "parent of the last, " << child;
            before = child;
        }
        return testing::AssertionSuccess();
    }

    HtmlTree tree_{std::string_view("one two three")};
    const std::string_view one_ = tree_.source().substr(0, 3);
    const std::string_view two_ = tree_.source().substr(4, 3);
};

TEST_F(HtmlTreeLinks, leadFromEachNodeToItsNeighbours) {
    const NodeId div = appended(HtmlTree::kDocument, Tag::div);
    appended(div, Tag::p);
    tree_.appendText(div, one_);
    appended(div, Tag::br);
    EXPECT_EQ(checkedTree(), "div(p 'one' br)");
}

TEST_F(HtmlTreeLinks, aLoneTextGetsSiblings) {
    const NodeId div = appended(HtmlTree::kDocument, Tag::div);
    tree_.appendText(div, one_);
    EXPECT_EQ(checkedTree(), "div('one')");
    tree_.appendText(div, two_);
    EXPECT_EQ(checkedTree(), "div('one' 'two')");
    appended(div, Tag::br);
    EXPECT_EQ(checkedTree(), "div('one' 'two' br)");
}

TEST_F(HtmlTreeLinks, aLoneTextIsAsSmallAsCanBe) {
    const NodeId div = appended(HtmlTree::kDocument, Tag::div);
    const std::size_t before = tree_.bytes();
    tree_.appendText(div, one_);
    EXPECT_EQ(tree_.bytes() - before, sizeof(Node));
}

TEST_F(HtmlTreeLinks, aTextFarFromItsParentIsNoLoneOne) {
    const NodeId far = appended(HtmlTree::kDocument, Tag::div);
    for (int i = 0; i < 100; ++i)
        appended(HtmlTree::kDocument, Tag::br);
    tree_.appendText(far, one_);
    EXPECT_TRUE(checkedTree().starts_with("div('one') br br"));
}

TEST_F(HtmlTreeLinks, takeInWhatIsInsertedBefore) {
    const NodeId div = appended(HtmlTree::kDocument, Tag::div);
    tree_.appendText(div, one_);
    const NodeId table = appended(div, Tag::table);
    tree_.insertBefore(div, tree_.createText(two_), table);
    EXPECT_EQ(checkedTree(), "div('one' 'two' table)");
    const NodeId first = appended(HtmlTree::kDocument, Tag::p);
    tree_.remove(first);
    tree_.insertBefore(HtmlTree::kDocument, first, div);
    EXPECT_EQ(checkedTree(), "p div('one' 'two' table)");
    tree_.insertBefore(first, element(Tag::br), kNoNode);
    EXPECT_EQ(checkedTree(), "p(br) div('one' 'two' table)");
}

TEST_F(HtmlTreeLinks, closeWhereANodeIsRemoved) {
    const NodeId div = appended(HtmlTree::kDocument, Tag::div);
    const NodeId first = appended(div, Tag::p);
    const NodeId middle = appended(div, Tag::br);
    const NodeId last = appended(div, Tag::hr);
    tree_.remove(middle);
    EXPECT_EQ(checkedTree(), "div(p hr)");
    tree_.remove(last);
    EXPECT_EQ(checkedTree(), "div(p)");
    tree_.remove(first);
    EXPECT_EQ(checkedTree(), "div");
    tree_.append(div, last);
    tree_.append(div, first);
    tree_.remove(last);
    EXPECT_EQ(checkedTree(), "div(p)");
    tree_.remove(middle); // is in no tree any more
    EXPECT_EQ(tree_.parent(middle), kNoNode);
    EXPECT_EQ(checkedTree(), "div(p)");
}

TEST_F(HtmlTreeLinks, closeWhereATextIsRemoved) {
    const NodeId div = appended(HtmlTree::kDocument, Tag::div);
    tree_.appendText(div, one_);
    tree_.remove(tree_.firstChild(div));
    EXPECT_EQ(checkedTree(), "div");
    tree_.appendText(div, one_);
    appended(div, Tag::br);
    tree_.remove(tree_.firstChild(div));
    EXPECT_EQ(checkedTree(), "div(br)");
}

TEST_F(HtmlTreeLinks, goAlongWithChildrenThatAreMoved) {
    const NodeId from = appended(HtmlTree::kDocument, Tag::div);
    const NodeId to = appended(HtmlTree::kDocument, Tag::p);
    EXPECT_EQ(tree_.moveChildren(from, to), 0U);
    tree_.appendText(from, one_);
    EXPECT_EQ(tree_.moveChildren(from, to), 1U);
    EXPECT_EQ(checkedTree(), "div p('one')");
    appended(from, Tag::br);
    tree_.appendText(from, two_);
    EXPECT_EQ(tree_.moveChildren(from, to), 2U);
    EXPECT_EQ(checkedTree(), "div p('one' br 'two')");
}

TEST(HtmlTree, keepsTextsOfAnyLength) {
    std::string source;
    for (int i = 0; i < 200; ++i)
        source += "abc ";
    HtmlTree tree{std::string_view(source)};
    for (const std::size_t length : {1U, 254U, 255U, 256U, 800U}) {
        const std::string_view text = std::string_view(source).substr(0, length);
        const NodeId div = tree.createElement(Tag::div, "div", Namespace::html, {});
        tree.appendText(div, text);
        EXPECT_EQ(tree.text(tree.firstChild(div)), text);
        tree.appendText(div, text);
        EXPECT_EQ(tree.text(tree.firstChild(div)), text);
        EXPECT_EQ(tree.text(tree.node(tree.firstChild(div)).next()), text);
    }
}

TEST(HtmlTree, keepsStringsThatAreNotInItsSource) {
    HtmlTree tree{std::string_view("source")};
    std::vector<std::string> written;
    std::vector<std::string_view> kept;
    std::vector<NodeId> texts;
    for (const std::size_t length : {10U, 100'000U, 30'000U, 60'000U, 65'536U, 5U, 200'000U}) {
        written.emplace_back(length, static_cast<char>('a' + written.size()));
        kept.push_back(tree.keep(written.back()));
    }
    for (const std::string_view text : kept) // those kept long ago among them
        texts.push_back(tree.createText(text));
    for (std::size_t i = 0; i < written.size(); ++i) {
        EXPECT_TRUE(kept[i] == written[i]) << i;
        EXPECT_TRUE(tree.text(texts[i]) == written[i]) << i;
    }
}

TEST(HtmlTree, keepsAttributesOfAnyKind) {
    const std::string longValue(100'000, 'v');
    const std::string longName(300, 'n');
    const auto tree = parseHtml("<x-y class=a data-" + longName + "='" + longValue + "' id='" + longValue +
                                "' Hidden data-e='' href='&amp;'>");
    const NodeId element = tree->firstChild(tree->node(tree->firstChild(tree->firstChild(0))).next());
    EXPECT_EQ(tree->text(element), "x-y");
    EXPECT_EQ(tree->attributes(element).size(), 6U);
    EXPECT_EQ(*tree->attribute(element, "class"), "a");
    EXPECT_EQ(*tree->attribute(element, "data-" + longName), longValue);
    EXPECT_EQ(*tree->attribute(element, AttributeName::id), longValue);
    EXPECT_EQ(*tree->attribute(element, AttributeName::hidden), "");
    EXPECT_EQ(*tree->attribute(element, "data-e"), "");
    EXPECT_EQ(*tree->attribute(element, "href"), "&");
    EXPECT_EQ(tree->attribute(element, AttributeName::value), std::nullopt);
    EXPECT_TRUE(tree->has(element, {AttributeName::value, AttributeName::hidden}));
    EXPECT_FALSE(tree->has(element, {AttributeName::value, AttributeName::open}));
    std::string names;
    for (const Attribute attribute : tree->attributes(element))
        names += std::string(attribute.name().substr(0, 6)) + " ";
    EXPECT_EQ(names, "class data-n id hidden data-e href ");
}

TEST(HtmlTree, namesOfAttributesAreCutOff) {
    const std::string name(AttributeHead::kMaxNameLength + 5, 'n');
    const auto tree = parseHtml("<p " + name + "=x>");
    const NodeId element = tree->firstChild(tree->node(tree->firstChild(tree->firstChild(0))).next());
    EXPECT_EQ((*tree->attributes(element).begin()).name(), name.substr(0, AttributeHead::kMaxNameLength));
    EXPECT_EQ((*tree->attributes(element).begin()).value(), "x");
}

TEST(HtmlTree, copiesShareTheirAttributes) {
    HtmlTree tree{std::string_view()};
    const Attribute attribute(AttributeName::class_, "class", "a");
    const NodeId original = tree.createElement(Tag::unknown, "x-y", Namespace::svg, {&attribute, 1});
    const std::size_t before = tree.bytes();
    const NodeId copy = tree.createClone(original);
    EXPECT_EQ(tree.bytes() - before, 24U);
    EXPECT_EQ(tree.text(copy), "x-y");
    EXPECT_EQ(tree.node(copy).space, Namespace::svg);
    EXPECT_EQ(*tree.attribute(copy, AttributeName::class_), "a");
    EXPECT_EQ(tree.parent(copy), kNoNode);
}

} // namespace
} // namespace quillow::html
