#include "engines/pdf/syntax/PageTree.h"

#include "engines/pdf/Limits.h"
#include "tests/engines/pdf/PdfBuilder.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::pdf {

bool operator==(const Rectangle& a, const Rectangle& b) {
    return a.left == b.left && a.bottom == b.bottom && a.right == b.right && a.top == b.top;
}
std::ostream& operator<<(std::ostream& out, const Rectangle& r) {
    return out << r.left << ' ' << r.bottom << ' ' << r.right << ' ' << r.top;
}

namespace {

using test::PdfBuilder;

/// A document made of a catalog with the number 1 and the objects from 2 on. It must outlive what is read from it.
class Made {
public:
    explicit Made(const std::vector<std::string>& objects) {
        PdfBuilder pdf;
        pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>");
        std::uint32_t number = 2;
        for (const std::string& object : objects)
            pdf.object(number++, object);
        bytes_ = pdf.table().bytes();
        auto result = Document::open(bytes_);
        if (!result) return;
        document = std::move(result.value());
        pages = pagesOf(*document);
    }
    /// The marks of the pages, one after another.
    [[nodiscard]] std::string marks() const {
        std::string all;
        for (const PageNode& page : pages)
            all += document->get(page.dictionary, "Mark").string();
        return all;
    }

    std::unique_ptr<Document> document;
    std::vector<PageNode> pages;

private:
    std::string bytes_;
};

struct TreeCase {
    std::string_view name;
    std::vector<std::string> objects;
    std::string_view marks;
};

TEST(PageTree, findsThePages) {
    const std::string a = "<</Type/Page/Mark(a)>>";
    const std::string b = "<</Type/Page/Mark(b)>>";
    const TreeCase cases[] = {
        {"two pages", {"<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2>>", a, b}, "ab"},
        {"order of the kids", {"<</Type/Pages/Kids[4 0 R 3 0 R]/Count 2>>", a, b}, "ba"},
        {"nested",
         {"<</Type/Pages/Kids[3 0 R 6 0 R]>>", "<</Type/Pages/Kids[4 0 R 5 0 R]>>", a, b, "<</Type/Page/Mark(c)>>"},
         "abc"},
        {"count wrong", {"<</Type/Pages/Kids[3 0 R 4 0 R]/Count 77>>", a, b}, "ab"},
        {"count negative", {"<</Type/Pages/Kids[3 0 R 4 0 R]/Count -1>>", a, b}, "ab"},
        {"kids null or missing", {"<</Type/Pages/Kids[null 3 0 R 77 0 R 5 (x) 4 0 R]>>", a, b}, "ab"},
        {"kids indirect", {"<</Type/Pages/Kids 5 0 R>>", a, b, "[3 0 R 4 0 R]"}, "ab"},
        {"kids direct", {"<</Type/Pages/Kids[<</Type/Page/Mark(a)>> 3 0 R]>>", b}, "ab"},
        {"pages without a type", {"<</Type/Pages/Kids[3 0 R 4 0 R]>>", "<</Mark(a)>>", b}, "ab"},
        {"tree without a type", {"<</Kids[3 0 R 4 0 R]>>", a, b}, "ab"},
        {"tree that says it is a page", {"<</Type/Page/Kids[3 0 R]>>", a}, "a"},
        {"page with kids",
         {"<</Type/Pages/Kids[3 0 R]>>", "<</Type/Page/Mark(a)/Contents 5 0 R/Kids[4 0 R]>>", b},
         "a"},
        {"tree without kids", {"<</Type/Pages/Kids[3 0 R 4 0 R]>>", "<</Type/Pages>>", b}, "b"},
        {"cycle", {"<</Type/Pages/Kids[3 0 R 2 0 R 4 0 R]>>", a, b}, "ab"},
        {"cycle of two", {"<</Type/Pages/Kids[3 0 R 4 0 R]>>", "<</Type/Pages/Kids[2 0 R 4 0 R]>>", b}, "bb"},
        {"a page twice", {"<</Type/Pages/Kids[3 0 R 3 0 R]>>", a}, "aa"},
        {"the tree is a page", {a}, "a"},
    };
    for (const TreeCase& c : cases)
        EXPECT_EQ(Made(c.objects).marks(), c.marks) << c.name;
}

TEST(PageTree, treesMayBeDeep) {
    const auto treeOf = [](std::size_t depth) {
        std::vector<std::string> objects;
        for (std::size_t i = 0; i < depth; ++i)
            objects.push_back("<</Kids[" + std::to_string(i + 3) + " 0 R]>>");
        objects.emplace_back("<</Mark(a)>>");
        return objects;
    };

    EXPECT_EQ(Made(treeOf(kMaximumPageTreeDepth)).marks(), "a");
    EXPECT_EQ(Made(treeOf(kMaximumPageTreeDepth + 1)).document, nullptr);
}

TEST(PageTree, treesWhoseNodesAreUsedAgainAndAgainEnd) {
    std::vector<std::string> objects;
    for (int i = 3; i < 43; ++i)
        objects.push_back("<</Kids[" + std::to_string(i) + " 0 R " + std::to_string(i) + " 0 R]>>");
    objects.emplace_back("<</Kids[]>>");

    EXPECT_EQ(Made(objects).document, nullptr);
}

TEST(PageTree, theFirstPageIsLookedForInAsManyNodesAsAllowed) {
    const auto treeWith = [](std::size_t emptyNodes) {
        std::string kids;
        for (std::size_t i = 0; i < emptyNodes; ++i)
            kids += "3 0 R ";
        return Made({"<</Kids[" + kids + "4 0 R]>>", "<</Type/Pages/Kids[]>>", "<</Mark(a)>>"}).marks();
    };

    EXPECT_EQ(treeWith(kMaximumNodesBeforePage - 2), "a");
    EXPECT_EQ(treeWith(kMaximumNodesBeforePage - 1), "");
}

TEST(PageTree, pagesBeyondTheLimitAreLeftOut) {
    std::string kids;
    for (std::size_t i = 0; i < kMaximumPages + 10; ++i)
        kids += "3 0 R ";

    EXPECT_EQ(Made({"<</Kids[" + kids + "]>>", "<</Type/Page>>"}).pages.size(), kMaximumPages);
}

TEST(PageTree, nodesBeyondTheLimitAreLeftOut) {
    const auto marksWith = [](std::size_t emptyNodes) {
        std::string kids = "4 0 R ";
        for (std::size_t i = 0; i < emptyNodes; ++i)
            kids += "3 0 R ";
        return Made({"<</Kids[" + kids + "4 0 R]>>", "<</Type/Pages/Kids[]>>", "<</Mark(a)>>"}).marks();
    };

    EXPECT_EQ(marksWith(kMaximumPageTreeNodes - 3), "aa");
    EXPECT_EQ(marksWith(kMaximumPageTreeNodes - 2), "a");
}

TEST(PageTree, pagesInheritFromTheirParents) {
    const Made made({"<</Kids[3 0 R]/MediaBox[0 0 100 200]/Rotate 90/Resources<</A 1>>>>",
                     "<</Kids[4 0 R 5 0 R]/CropBox[10 20 50 60]/Resources 6 0 R>>", "<</Type/Page>>",
                     "<</Rotate 180/CropBox[0 0 20 20]/MediaBox[0 0 30 30]/Resources<</A 3>>>>", "<</A 2>>"});
    ASSERT_EQ(made.pages.size(), 2U);

    EXPECT_EQ(made.pages[0].rotation, 90);
    EXPECT_EQ(made.pages[0].cropBox, (Rectangle{10, 20, 50, 60}));
    EXPECT_EQ(made.pages[0].resources.find("A").integerOr(0), 2);
    EXPECT_EQ(made.pages[0].id, (Reference{4, 0}));
    EXPECT_EQ(made.pages[1].rotation, 180);
    EXPECT_EQ(made.pages[1].cropBox, (Rectangle{0, 0, 20, 20}));
    EXPECT_EQ(made.pages[1].resources.find("A").integerOr(0), 3);
}

struct BoxCase {
    std::string_view entries;
    Rectangle box;
};

TEST(PageTree, boxesAreMadeSenseOf) {
    const Rectangle letter{0, 0, 612, 792};
    const BoxCase cases[] = {
        {"", letter},
        {"/MediaBox[0 0 200 100]", {0, 0, 200, 100}},
        {"/MediaBox[200 100 0 -5.5]", {0, -5.5, 200, 100}},
        {"/MediaBox[0 0 5 0 R 100]", {0, 0, 7, 100}},
        {"/MediaBox 4 0 R", {1, 2, 3, 4}},
        {"/MediaBox[0 0 200]", letter},
        {"/MediaBox[0 0 200/x]", letter},
        {"/MediaBox[0 0 0 0]", letter},
        {"/MediaBox[0 0 100 0]", letter},
        {"/MediaBox[0 0 1e9 100]", {0, 0, 1, 100}},
        {"/MediaBox[0 0 99999999999 100]", letter},
        {"/MediaBox null", letter},
        {"/MediaBox[0 0 200 100]/CropBox[10 10 900 50]", {10, 10, 200, 50}},
        {"/MediaBox[0 0 200 100]/CropBox[50 50 10 10]", {10, 10, 50, 50}},
        {"/MediaBox[0 0 200 100]/CropBox[300 300 400 400]", {0, 0, 200, 100}},
        {"/MediaBox[0 0 200 100]/CropBox[0 0 0 0]", {0, 0, 200, 100}},
        {"/CropBox[0 0 1000 100]", {0, 0, 612, 100}},
        {"/MediaBox[0 0 10000000 100]", {0, 0, 1e7, 100}},
        {"/MediaBox[0 0 10000001 100]", {0, 0, 612, 792}},
        {"/MediaBox[0 -10000001 200 100]", {0, 0, 612, 792}},
    };
    for (const BoxCase& c : cases) {
        const Made made({"<</Kids[3 0 R]>>", "<</Type/Page" + std::string(c.entries) + ">>", "[1 2 3 4]", "7"});
        ASSERT_EQ(made.pages.size(), 1U) << c.entries;
        EXPECT_EQ(made.pages[0].cropBox, c.box) << c.entries;
    }
}

struct NumberCase {
    std::string_view entries;
    int rotation;
    double userUnit;
};

TEST(PageTree, rotationsAreQuartersOfACircle) {
    const NumberCase cases[] = {
        {"", 0, 1},
        {"/Rotate 90", 90, 1},
        {"/Rotate 360", 0, 1},
        {"/Rotate 450", 90, 1},
        {"/Rotate -90", 270, 1},
        {"/Rotate -450", 270, 1},
        {"/Rotate 91", 90, 1},
        {"/Rotate 350", 0, 1},
        {"/Rotate 90.0", 90, 1},
        {"/Rotate/x", 0, 1},
        {"/Rotate 99999999999999999999", 0, 1},
        {"/UserUnit 2.5", 0, 2.5},
        {"/UserUnit 0", 0, 1},
        {"/UserUnit -1", 0, 1},
        {"/UserUnit/x", 0, 1},
        {"/UserUnit 9999999", 0, 9999999},
        {"/UserUnit 10000000", 0, 1},
    };
    for (const NumberCase& c : cases) {
        const Made made({"<</Kids[3 0 R]>>", "<</Type/Page" + std::string(c.entries) + ">>"});
        ASSERT_EQ(made.pages.size(), 1U) << c.entries;
        EXPECT_EQ(made.pages[0].userUnit, c.userUnit) << c.entries;
        EXPECT_EQ(made.pages[0].rotation % 90, 0) << c.entries;
        if (c.entries.size() < 20) {
            EXPECT_EQ(made.pages[0].rotation, c.rotation) << c.entries;
        }
    }
}

struct ContentCase {
    std::string_view contents;
    std::string_view text;
};

TEST(PageTree, contentsAreOneStreamOrSeveral) {
    const ContentCase cases[] = {
        {"", ""},
        {"/Contents 4 0 R", "a"},
        {"/Contents[4 0 R 5 0 R]", "ab"},
        {"/Contents 6 0 R", "ab"},
        {"/Contents[6 0 R[5 0 R]4 0 R]", "abba"},
        {"/Contents[null 4 0 R 77 0 R 7 0 R(x)5 0 R]", "ab"},
        {"/Contents null", ""},
        {"/Contents 77 0 R", ""},
        {"/Contents 8 0 R", ""},
    };
    for (const ContentCase& c : cases) {
        const Made made({"<</Kids[3 0 R]>>", "<</Type/Page" + std::string(c.contents) + ">>",
                         "<</Length 1>>stream\na\nendstream", "<</Length 1>>stream\nb\nendstream", "[4 0 R 5 0 R]",
                         "<<>>", "[8 0 R]"});
        std::string text;
        text::ByteBuffer buffer;
        for (const StreamContent* stream : contentsOf(*made.document, made.pages.at(0)))
            text += made.document->decode(*stream, buffer).bytes;
        EXPECT_EQ(text, c.text) << c.contents;
    }
}

TEST(PageTree, contentStreamsAreBounded) {
    std::string many;
    for (std::size_t i = 0; i < kMaximumContentStreams + 9; ++i)
        many += "5 0 R ";
    const Made made(
        {"<</Kids[3 0 R]>>", "<</Type/Page/Contents 4 0 R>>", "[" + many + "]", "<</Length 1>>stream\na\nendstream"});

    EXPECT_EQ(contentsOf(*made.document, made.pages.at(0)).size(), kMaximumContentStreams);
}

TEST(PageTree, contentArraysThatContainThemselvesEnd) {
    const Made made({"<</Kids[3 0 R]>>", "<</Type/Page/Contents 4 0 R>>", "[4 0 R 5 0 R 4 0 R 4 0 R 4 0 R]",
                     "<</Length 1>>stream\na\nendstream"});

    EXPECT_LE(contentsOf(*made.document, made.pages.at(0)).size(), kMaximumContentStreams);
}

TEST(PageTree, contentArraysNestAsDeepAsAllowed) {
    const auto streamsIn = [](std::size_t depth) {
        const Made made({"<</Kids[3 0 R]>>",
                         "<</Type/Page/Contents" + std::string(depth, '[') + "4 0 R" + std::string(depth, ']') + ">>",
                         "<</Length 1>>stream\na\nendstream"});
        return contentsOf(*made.document, made.pages.at(0)).size();
    };

    EXPECT_EQ(streamsIn(kMaximumContentNesting), 1U);
    EXPECT_EQ(streamsIn(kMaximumContentNesting + 1), 0U);
}

} // namespace
} // namespace quillow::pdf
