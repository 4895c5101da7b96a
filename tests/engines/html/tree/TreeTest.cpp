// The links and strings of a tree that is built by hand. Tree construction has its own tests.
#include "engines/html/tree/Tree.h"

#include "engines/html/parser/Parse.h"
#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

#include <functional>

namespace quillow::html {
namespace {

class HtmlTreeLinks : public testing::Test {
protected:
    NodeId appended(NodeId parent, NodeId last, Tag tag) {
        return tree_.appendElement(parent, last, tag, tagName(tag), Namespace::html, {});
    }
    NodeId element(Tag tag) { return tree_.createElement(tag, tagName(tag), Namespace::html, {}); }
    std::size_t bytesFor(const std::function<void()>& change) {
        const std::size_t before = tree_.bytes();
        change();
        return tree_.bytes() - before;
    }

    Tree tree_{std::string_view("one two three")};
    const std::string_view one_ = tree_.source().substr(0, 3);
    const std::string_view two_ = tree_.source().substr(4, 3);
    const NodeId div_ = appended(Tree::kDocument, kNoNode, Tag::div);
};

TEST_F(HtmlTreeLinks, leadToChildrenAndSiblings) {
    const NodeId p = appended(div_, kNoNode, Tag::p);
    const NodeId text = tree_.appendText(div_, p, one_);
    const NodeId br = appended(div_, text, Tag::br);
    tree_.appendText(div_, br, two_);
    tree_.appendText(p, kNoNode, two_);
    EXPECT_EQ(treeOf(tree_), "div(p('two') 'one' br 'two')");
}

TEST_F(HtmlTreeLinks, costNothingToWhatIsRightBehind) {
    NodeId last = kNoNode;
    EXPECT_EQ(bytesFor([&] { last = tree_.appendText(div_, last, one_); }), 8U);
    EXPECT_EQ(bytesFor([&] { last = appended(div_, last, Tag::br); }), 4U);
    EXPECT_EQ(bytesFor([&] { last = tree_.appendText(div_, last, two_); }), 8U);
    EXPECT_EQ(bytesFor([&] { last = appended(div_, last, Tag::b); }), 8U);
    EXPECT_EQ(bytesFor([&] { tree_.appendText(last, kNoNode, two_); }), 8U);
    EXPECT_EQ(treeOf(tree_), "div('one' br 'two' b('two'))");
}

TEST_F(HtmlTreeLinks, areFoundWhereANodeHadNoRoomForThem) {
    const NodeId text = tree_.appendText(div_, kNoNode, one_);
    const NodeId elsewhere = appended(Tree::kDocument, div_, Tag::p);
    const NodeId br = appended(div_, text, Tag::br); // not directly after the text
    appended(Tree::kDocument, elsewhere, Tag::p);
    const NodeId b = appended(div_, br, Tag::b); // not directly after the line break
    const NodeId after = tree_.appendText(div_, b, two_);
    tree_.appendText(b, kNoNode, one_); // a first child that is added late
    EXPECT_EQ(treeOf(tree_), "div('one' br b('one') 'two') p p");
    EXPECT_NE(tree_.resolved(text), text);
    EXPECT_NE(tree_.resolved(br), br);
    EXPECT_NE(tree_.resolved(b), b);
    EXPECT_EQ(tree_.resolved(after), after);
    EXPECT_EQ(tree_.text(tree_.resolved(text)), one_);
    EXPECT_EQ(tree_.text(tree_.resolved(b)), "b");
}

TEST_F(HtmlTreeLinks, ofALongTextThatMoves) {
    const std::string source(100'000, 'x');
    Tree tree{std::string_view(source)};
    const NodeId text = tree.appendText(Tree::kDocument, kNoNode, source);
    static_cast<void>(tree.createText("elsewhere"));
    tree.appendText(Tree::kDocument, text, source);
    const NodeId first = tree.firstChild(Tree::kDocument);
    EXPECT_EQ(first, tree.resolved(text));
    EXPECT_TRUE(tree.text(first) == source && tree.text(tree.next(first)) == source);
}

TEST_F(HtmlTreeLinks, goToAnyPlaceThatHasMoved) {
    // A node that has moved holds only the number of its new place.
    std::vector<NodeId> texts;
    for (int i = 0; i < 100'000; ++i) {
        texts.push_back(tree_.createText(one_));
        tree_.insert(Tree::kDocument, i == 0 ? div_ : texts[texts.size() - 2], texts.back());
        static_cast<void>(tree_.createText(two_));
    }
    NodeId node = tree_.next(tree_.firstChild(Tree::kDocument));
    for (const NodeId text : texts) {
        ASSERT_EQ(node, tree_.resolved(text));
        node = tree_.next(node);
    }
    EXPECT_EQ(node, kNoNode);
}

TEST_F(HtmlTreeLinks, takeInWhatIsInserted) {
    const NodeId text = tree_.appendText(div_, kNoNode, one_);
    appended(div_, text, Tag::table);
    const NodeId fostered = tree_.createText(two_);
    tree_.insert(div_, text, fostered);
    EXPECT_EQ(treeOf(tree_), "div('one' 'two' table)");
    tree_.insert(div_, fostered, element(Tag::br));
    EXPECT_EQ(treeOf(tree_), "div('one' 'two' br table)");
    const NodeId first = element(Tag::p);
    tree_.insert(Tree::kDocument, kNoNode, first);
    tree_.insert(first, kNoNode, element(Tag::hr));
    EXPECT_EQ(treeOf(tree_), "p(hr) div('one' 'two' br table)");
}

TEST_F(HtmlTreeLinks, closeWhereANodeIsRemoved) {
    const NodeId text = tree_.appendText(div_, kNoNode, one_);
    const NodeId middle = appended(div_, text, Tag::p);
    const NodeId last = appended(div_, middle, Tag::b);
    tree_.appendText(middle, kNoNode, two_);
    tree_.remove(div_, text, middle);
    EXPECT_EQ(treeOf(tree_), "div('one' b)");
    tree_.remove(div_, text, last);
    EXPECT_EQ(treeOf(tree_), "div('one')");
    tree_.remove(div_, kNoNode, text);
    EXPECT_EQ(treeOf(tree_), "div");
    tree_.insert(div_, kNoNode, last);
    tree_.insert(div_, last, middle);
    tree_.remove(div_, kNoNode, last);
    EXPECT_EQ(treeOf(tree_), "div(p('two'))");
}

TEST_F(HtmlTreeLinks, goAlongWithChildrenThatAreMoved) {
    const NodeId to = appended(Tree::kDocument, div_, Tag::p);
    tree_.moveChildren(div_, to);
    EXPECT_EQ(treeOf(tree_), "div p");
    const NodeId text = tree_.appendText(div_, kNoNode, one_);
    appended(div_, text, Tag::br);
    tree_.moveChildren(div_, to);
    EXPECT_EQ(treeOf(tree_), "div p('one' br)");
    appended(div_, kNoNode, Tag::hr);
    tree_.removeChildren(to);
    EXPECT_EQ(treeOf(tree_), "div(hr) p");
}

TEST(Tree, keepsTextsOfAnyLength) {
    std::string source;
    for (int i = 0; i < 2'000; ++i)
        source += "abc ";
    Tree tree{std::string_view(source)};
    for (const std::size_t length : {1U, 4094U, 4095U, 4096U, 8000U}) {
        const std::string_view text = std::string_view(source).substr(0, length);
        const NodeId div = tree.createElement(Tag::div, "div", Namespace::html, {});
        tree.appendText(div, tree.appendText(div, kNoNode, text), text);
        const NodeId first = tree.firstChild(div);
        EXPECT_EQ(tree.text(first), text);
        EXPECT_EQ(tree.text(tree.next(first)), text);
    }
}

TEST(Tree, keepsStringsThatAreNotInItsSource) {
    Tree tree{std::string_view("source")};
    std::vector<std::string> written;
    std::vector<std::string_view> kept;
    std::vector<NodeId> texts;
    for (const std::size_t length : {10U, 100'000U, 30'000U, 60'000U, 65'536U, 5U, 200'000U}) {
        written.emplace_back(length, static_cast<char>('a' + written.size()));
        kept.push_back(tree.keep(written.back()));
    }
    for (const std::string_view text : kept) // including the oldest ones
        texts.push_back(tree.createText(text));
    for (std::size_t i = 0; i < written.size(); ++i) {
        EXPECT_TRUE(kept[i] == written[i]) << i;
        EXPECT_TRUE(tree.text(texts[i]) == written[i]) << i;
    }
}

TEST(Tree, keepsAttributesOfAnyKind) {
    const std::string longValue(100'000, 'v');
    const std::string longName(300, 'n');
    const auto tree = parseHtml("<x-y class=a data-" + longName + "='" + longValue + "' id='" + longValue +
                                "' Hidden data-e='' href='&amp;'>");
    const NodeId element = tree->firstChild(bodyOf(*tree));
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

TEST(Tree, namesOfAttributesAreCutOff) {
    const std::string name(AttributeHead::kMaxNameLength + 5, 'n');
    const auto tree = parseHtml("<p " + name + "=x>");
    const NodeId element = tree->firstChild(bodyOf(*tree));
    EXPECT_EQ((*tree->attributes(element).begin()).name(), name.substr(0, AttributeHead::kMaxNameLength));
    EXPECT_EQ((*tree->attributes(element).begin()).value(), "x");
}

TEST(Tree, copiesShareTheirAttributes) {
    Tree tree{std::string_view()};
    const Attribute attribute(AttributeName::class_, "class", "a");
    const NodeId original = tree.createElement(Tag::unknown, "x-y", Namespace::svg, {&attribute, 1});
    const std::size_t before = tree.bytes();
    const NodeId copy = tree.createClone(original, true);
    EXPECT_EQ(tree.bytes() - before, 16U);
    EXPECT_EQ(tree.text(copy), "x-y");
    EXPECT_EQ(tree.node(copy).space, Namespace::svg);
    EXPECT_EQ(*tree.attribute(copy, AttributeName::class_), "a");
}

} // namespace
} // namespace quillow::html
