#include "engines/pdf/layout/PageText.h"

#include "engines/pdf/layout/Line.h"
#include "engines/pdf/layout/LineText.h"
#include "engines/pdf/layout/Order.h"
#include "engines/pdf/layout/Paragraphs.h"
#include "engines/pdf/layout/Row.h"
#include "engines/pdf/layout/Span.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

bool isBesideIt(const Row& row, const Line& line) {
    constexpr float kSameRow = 0.5F;
    return verticalOverlap(row, line) > kSameRow && line.left >= row.right;
}

std::vector<Row> rowsOf(const std::vector<Line>& lines) {
    std::vector<Row> rows;
    for (std::uint32_t i = 0; i < lines.size(); ++i) {
        if (!rows.empty() && isBesideIt(rows.back(), lines[i]))
            addLine(rows.back(), lines[i], i);
        else
            rows.push_back(rowOf(lines[i], i));
    }
    return rows;
}

void appendRow(const Row& row, const std::vector<Line>& lines, LineWriter& writer, std::u32string& out) {
    bool first = true;
    for (const std::uint32_t line : row.lines) {
        if (!first) out.push_back(row.isTableRow ? U'\t' : U' ');
        writer.append(lines[line], out);
        first = false;
    }
}

} // namespace

void appendPageText(const Page& page, std::u32string& out) {
    for (const Orientation& orientation : orientationsOf(page)) {
        std::vector<Line> lines = linesOf(orientation);
        putInReadingOrder(lines);
        std::vector<Row> rows = rowsOf(lines);
        markParagraphs(rows);
        LineWriter writer(page, orientation);
        bool first = true;
        for (const Row& row : rows) {
            const std::size_t begin = out.size();
            if (!first && row.beginsParagraph) out.push_back(U'\n');
            const std::size_t textBegin = out.size();
            appendRow(row, lines, writer, out);
            if (out.size() == textBegin) {
                out.resize(begin);
                continue;
            }
            out.push_back(U'\n');
            first = false;
        }
    }
}

} // namespace quillow::pdf
