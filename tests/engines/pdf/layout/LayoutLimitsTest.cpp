// Pages that are made to take long.
#include "engines/pdf/layout/Paragraphs.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillow::pdf {
namespace {

class Rows {
public:
    /// A row below those that are there; `leading` is in ems.
    void add(float size, float leading) {
        Row row;
        row.right = 100;
        row.size = size;
        row.top = y_ - leading * size;
        row.baseline = row.bottom = row.top - size;
        y_ = row.bottom;
        rows.push_back(row);
    }

    std::vector<Row> rows;

private:
    float y_ = 0;
};

/// Whether rows that are further apart than others are a paragraph below that many rows, each with a size of its own.
bool isLeadingKnownBelow(std::size_t sizes) {
    Rows rows;
    for (std::size_t i = 0; i < sizes; ++i)
        rows.add(1 + static_cast<float>(i) / 16, 1);
    for (int i = 0; i < 5; ++i)
        rows.add(1000, 2);
    markParagraphs(rows.rows);
    return !rows.rows.back().beginsParagraph;
}

TEST(PdfLayoutLimits, leadingsOfSoManySizesAreLookedFor) {
    EXPECT_TRUE(isLeadingKnownBelow(1'900));
    EXPECT_FALSE(isLeadingKnownBelow(2'200));
}

} // namespace
} // namespace quillow::pdf
