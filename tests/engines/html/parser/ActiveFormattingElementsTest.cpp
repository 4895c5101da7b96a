// The list of active formatting elements: markers, the Noah's Ark clause, and its bounds.
#include "engines/html/parser/ActiveFormattingElements.h"

#include "engines/html/tree/Tree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillow::html {
namespace {

class ActiveFormatting : public testing::Test {
protected:
    /// Pushes a new element with `count` attributes of equal values. Their order starts at the attribute `first`.
    NodeId push(Tag tag, std::size_t count = 0, std::size_t first = 0) {
        std::vector<Attribute> attributes;
        for (std::size_t i = 0; i < count; ++i)
            attributes.emplace_back(AttributeName::unknown, names_.substr((first + i) % count, 1),
                                    tree_.source().substr(16));
        const NodeId id = tree_.createElement(tag, tagName(tag), Namespace::html, attributes);
        list_.push(id);
        return id;
    }

    Tree tree_{std::string_view("abcdefghijklmnop1")};
    const std::string_view names_ = tree_.source();
    ActiveFormattingElements list_{tree_};
};

TEST_F(ActiveFormatting, keepsThreeEqualElements) {
    const NodeId first = push(Tag::b);
    push(Tag::i);
    push(Tag::b);
    push(Tag::b);
    EXPECT_EQ(list_.find(first), 0U);
    const NodeId fourth = push(Tag::b);
    EXPECT_EQ(list_.find(first), ActiveFormattingElements::kNotListed);
    EXPECT_EQ(list_.size(), 4U);
    EXPECT_EQ(list_.last().id, fourth);
}

TEST_F(ActiveFormatting, comparesOnlyAfterTheLastMarker) {
    for (int i = 0; i < 3; ++i)
        push(Tag::b);
    list_.insertMarker();
    push(Tag::b);
    EXPECT_EQ(list_.size(), 5U);
}

TEST_F(ActiveFormatting, fewAttributesAreEqualInAnyOrder) {
    for (std::size_t first = 0; first < 4; ++first)
        push(Tag::b, kMaxUnorderedAttributes, first);
    EXPECT_EQ(list_.size(), 3U);
}

TEST_F(ActiveFormatting, manyAttributesAreEqualOnlyInOrder) {
    for (std::size_t first = 0; first < 4; ++first)
        push(Tag::b, kMaxUnorderedAttributes + 1, first);
    EXPECT_EQ(list_.size(), 4U);
    for (int i = 0; i < 4; ++i)
        push(Tag::i, kMaxUnorderedAttributes + 1);
    EXPECT_EQ(list_.size(), 7U);
}

TEST_F(ActiveFormatting, otherAttributesMakeOtherElements) {
    for (std::size_t count = 0; count < 4; ++count)
        push(Tag::b, count);
    EXPECT_EQ(list_.size(), 4U);
}

TEST_F(ActiveFormatting, forgetsTheEarliestBeyondTheBound) {
    push(Tag::b);
    list_.insertMarker();
    const NodeId earliest = push(Tag::u);
    for (std::size_t i = 1; i < kMaxActiveFormatting; ++i)
        push(i % 2 == 0 ? Tag::b : Tag::i, 1 + i / 6);
    EXPECT_EQ(list_.size(), kMaxActiveFormatting + 2);
    push(Tag::s);
    EXPECT_EQ(list_.size(), kMaxActiveFormatting + 2);
    EXPECT_EQ(list_.find(earliest), ActiveFormattingElements::kNotListed);
    EXPECT_FALSE(list_[0].isMarker());
}

TEST_F(ActiveFormatting, clearsToTheLastMarkerOnly) {
    push(Tag::b);
    list_.insertMarker();
    push(Tag::i);
    list_.clearToMarker();
    EXPECT_EQ(list_.size(), 1U);
    list_.clearToMarker();
    EXPECT_TRUE(list_.empty());
    list_.clearToMarker();
    EXPECT_TRUE(list_.empty());
}

TEST_F(ActiveFormatting, aTagIsFoundOnlyAfterTheLastMarker) {
    push(Tag::a);
    push(Tag::a);
    EXPECT_EQ(list_.findLast(Tag::a), 1U);
    list_.insertMarker();
    push(Tag::b);
    EXPECT_EQ(list_.findLast(Tag::a), ActiveFormattingElements::kNotListed);
    EXPECT_EQ(list_.findLast(Tag::b), 3U);
}

TEST_F(ActiveFormatting, removesReplacesAndInserts) {
    const NodeId b = push(Tag::b);
    const NodeId i = push(Tag::i);
    list_.remove(b);
    list_.remove(b);
    EXPECT_EQ(list_.size(), 1U);
    list_.insert(0, {b, Tag::b});
    EXPECT_EQ(list_.find(i), 1U);
    list_.replace(1, 77);
    EXPECT_EQ(list_[1].id, 77U);
    EXPECT_EQ(list_[1].tag, Tag::i);
    list_.truncate(1);
    EXPECT_EQ(list_.last().id, b);
}

TEST_F(ActiveFormatting, examinedEntriesAndAttributesAreCounted) {
    push(Tag::b, 2);
    EXPECT_EQ(list_.steps(), 0U);
    push(Tag::b, 2);
    EXPECT_EQ(list_.steps(), 1U + 2U);
}

} // namespace
} // namespace quillow::html
