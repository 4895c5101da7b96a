// Which marked content is in which cell of a table.
#include "engines/pdf/structure/TableCells.h"

#include "tests/engines/pdf/PdfBuilder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillow::pdf {
namespace {

/// A document of one page whose structure tree has the elements; the first one has the number 11. `parents` are the
/// elements of the page's marked-content sequences.
std::string tagged(std::string_view parents, const std::vector<std::string>& elements, std::string_view root = "") {
    test::PdfBuilder file;
    file.object(1, "<</Type/Catalog/Pages 2 0 R/StructTreeRoot 5 0 R>>");
    file.object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    file.object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/StructParents 7>>");
    file.object(5, "<</Type/StructTreeRoot/ParentTree 6 0 R" + std::string(root) + ">>");
    file.object(6, "<</Kids[<</Limits[7 7]/Nums[7 10 0 R]>>]>>");
    file.object(10, "[" + std::string(parents) + "]");
    std::uint32_t number = 11;
    for (const std::string& element : elements)
        file.object(number++, element);
    file.table();
    return file.bytes();
}

/// "table.row.column" of each marked-content sequence, or "-". The page has two of them, `distance` below one another.
std::string cellsOf(const std::string& bytes, float distance = 0) {
    const auto document = Document::open(bytes);
    if (!document) return "damaged";
    const std::vector<PageNode> pages = pagesOf(*document.value());
    Page page;
    Run run;
    run.direction = {1, 0};
    run.fontSize = 10;
    for (run.markedContent = 0; run.markedContent < 2; ++run.markedContent, run.origin.y -= distance)
        page.runs.push_back(run);
    TableCells(*document.value()).find(pages.front(), page);
    std::string text;
    for (const CellMark& cell : page.cells) {
        text += text.empty() ? "" : " ";
        text += cell.table == CellMark::kNoTable
                    ? "-"
                    : std::to_string(cell.table) + "." + std::to_string(cell.row) + "." + std::to_string(cell.column);
    }
    return text;
}

TEST(PdfTableCells, rolesLeadToOneAnotherAsOftenAsAllowed) {
    constexpr int kMostRoles = 8;
    const auto cellsWith = [](int roles) {
        std::string map = "/RoleMap<</R0/TD";
        for (int i = 1; i < roles; ++i)
            map += "/R" + std::to_string(i) + "/R" + std::to_string(i - 1);
        const std::string cell = "<</S/R" + std::to_string(roles - 1) + "/P 12 0 R>>";
        return cellsOf(
            tagged("13 0 R 14 0 R",
                   {"<</S/Table/P 5 0 R/K 12 0 R>>", "<</S/TR/P 11 0 R/K[13 0 R 14 0 R]>>", cell, "<</S/TD/P 12 0 R>>"},
                   map + ">>"));
    };
    EXPECT_EQ(cellsWith(kMostRoles - 1), "0.0.0 0.0.1");
    EXPECT_EQ(cellsWith(kMostRoles), "- 0.0.0");
}

TEST(PdfTableCells, contentInACellHasItsRowAndColumn) {
    EXPECT_EQ(cellsOf(tagged("11 0 R 15 0 R 17 0 R",
                             {"<</S/P/P 5 0 R>>", "<</S/Table/P 5 0 R/K[13 0 R 16 0 R]>>",
                              "<</S/TR/P 12 0 R/K[14 0 R 15 0 R]>>", "<</S/TH/P 13 0 R>>", "<</S/TD/P 13 0 R>>",
                              "<</S/TR/P 12 0 R/K 17 0 R>>", "<</S/TD/P 16 0 R>>"})),
              "- 0.0.1 0.1.0");
}

TEST(PdfTableCells, contentInsideACellIsInTheCell) {
    EXPECT_EQ(cellsOf(tagged("15 0 R", {"<</S/Table/P 5 0 R/K 12 0 R>>", "<</S/TR/P 11 0 R/K[13 0 R]>>",
                                        "<</S/TD/P 12 0 R/K 14 0 R>>", "<</S/P/P 13 0 R/K 15 0 R>>",
                                        "<</S/Span/P 14 0 R/K 0>>"})),
              "0.0.0");
}

TEST(PdfTableCells, rowsInSectionsCountOn) {
    EXPECT_EQ(cellsOf(tagged("14 0 R 17 0 R",
                             {"<</S/Table/P 5 0 R/K[12 0 R 15 0 R]>>", "<</S/THead/P 11 0 R/K 13 0 R>>",
                              "<</S/TR/P 12 0 R/K 14 0 R>>", "<</S/TH/P 13 0 R>>", "<</S/TBody/P 11 0 R/K 16 0 R>>",
                              "<</S/TR/P 15 0 R/K 17 0 R>>", "<</S/TD/P 16 0 R>>"})),
              "0.0.0 0.1.0");
}

TEST(PdfTableCells, spansMoveTheCellsBesideAndBelow) {
    EXPECT_EQ(cellsOf(tagged("13 0 R 14 0 R 16 0 R",
                             {"<</S/Table/P 5 0 R/K[12 0 R 15 0 R]>>", "<</S/TR/P 11 0 R/K[13 0 R 14 0 R]>>",
                              "<</S/TD/P 12 0 R/A<</O/Table/ColSpan 2/RowSpan 2>>>>", "<</S/TD/P 12 0 R>>",
                              "<</S/TR/P 11 0 R/K 16 0 R>>", "<</S/TD/P 15 0 R>>"})),
              "0.0.0 0.0.2 0.1.2");
}

TEST(PdfTableCells, rolesOfTheProducerAreMapped) {
    EXPECT_EQ(cellsOf(tagged("13 0 R",
                             {"<</S/Grid/P 5 0 R/K 12 0 R>>", "<</S/Line/P 11 0 R/K 13 0 R>>", "<</S/Field/P 12 0 R>>"},
                             "/RoleMap<</Grid/Table/Line/TR/Field/Box/Box/TD>>")),
              "0.0.0");
}

TEST(PdfTableCells, aCellOutsideOfATableIsNone) {
    EXPECT_EQ(cellsOf(tagged("11 0 R", {"<</S/TD/P 5 0 R>>"})), "");
}

TEST(PdfTableCells, aPageWithoutContentSideBySideIsNotLookedUp) {
    const std::string bytes =
        tagged("13 0 R", {"<</S/Table/P 5 0 R/K 12 0 R>>", "<</S/TR/P 11 0 R/K 13 0 R>>", "<</S/TD/P 12 0 R>>"});
    EXPECT_EQ(cellsOf(bytes), "0.0.0");
    EXPECT_EQ(cellsOf(bytes, 12), "");
}

TEST(PdfTableCells, elementsThatAreTheirOwnParentsEnd) {
    EXPECT_EQ(cellsOf(tagged("11 0 R 13 0 R",
                             {"<</S/P/P 12 0 R>>", "<</S/P/P 11 0 R>>", "<</S/TD/P 14 0 R/K 13 0 R>>",
                              "<</S/TR/P 15 0 R/K[13 0 R 14 0 R]>>", "<</S/Table/P 13 0 R/K[14 0 R 15 0 R]>>"},
                             "/RoleMap<</P/Q/Q/P>>")),
              "- 0.0.0");
}

} // namespace
} // namespace quillow::pdf
