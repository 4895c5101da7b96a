#include "engines/pdf/layout/PageText.h"

#include "engines/pdf/layout/Bidi.h"
#include "engines/pdf/layout/Columns.h"
#include "engines/pdf/layout/Line.h"
#include "engines/pdf/layout/LineText.h"
#include "engines/pdf/layout/Order.h"
#include "engines/pdf/layout/Paragraphs.h"
#include "engines/pdf/layout/Row.h"
#include "engines/pdf/layout/Span.h"
#include "engines/pdf/layout/Table.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillow::pdf {

namespace {

constexpr std::uint32_t kNoTable = std::numeric_limits<std::uint32_t>::max();

/// The text of one writing direction.
class OrientationText {
public:
    OrientationText(const Page& page, const Orientation& orientation)
        : page_(page)
        , orientation_(orientation)
        , isFromTheRight_(!orientation.isVertical && isMostlyFromTheRight(page.text)) {}

    void append(std::u32string& out) && {
        makeLines();
        if (lines_.empty()) return;
        makeRulings();
        findTables();
        makeRows();
        markParagraphs(rows_);
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (i > 0 && rows_[i].beginsParagraph) out.push_back(U'\n');
            appendRow(rows_[i], out);
            out.push_back(U'\n');
        }
    }

private:
    /// The lines that have text, and their text.
    void makeLines() {
        LineWriter writer(page_, orientation_);
        std::vector<std::size_t> ends;
        Lines found = linesOf(orientation_);
        unweaveColumns(found.lines);
        for (const Line& line : found.lines) {
            const std::size_t begin = text_.size();
            writer.append(found.spansOf(line), text_);
            if (text_.size() == begin) continue;
            ends.push_back(text_.size());
            lines_.push_back(line);
        }
        std::size_t begin = 0;
        for (const std::size_t end : ends) {
            texts_.push_back(std::u32string_view(text_).substr(begin, end - begin));
            begin = end;
        }
    }

    void makeRulings() {
        const Frame& frame = orientation_.frame;
        for (const Rule& rule : page_.rules) {
            const Point a{rule.box.left, rule.box.bottom};
            const Point b{rule.box.right, rule.box.top};
            const auto [left, right] = std::minmax({frame.alongOf(a), frame.alongOf(b)});
            const auto [bottom, top] = std::minmax({frame.upOf(a), frame.upOf(b)});
            constexpr float kThick = 4; // points; thicker ones are bars and backgrounds
            if (top - bottom < kThick) {
                rulings_.push_back({left, right, bottom, top});
            } else if (right - left >= kThick) { // a box: its edges
                rulings_.push_back({left, right, bottom, bottom});
                rulings_.push_back({left, right, top, top});
            }
        }
    }

    /// Finds the tables of each column of text by themselves.
    void findTables() {
        const std::vector<std::uint32_t> columns = columnsOf(lines_);
        const std::uint32_t count = 1 + *std::max_element(columns.begin(), columns.end());
        if (count == 1) {
            tables_ = tablesOf(lines_, texts_, rulings_);
            return;
        }
        std::vector<std::vector<std::uint32_t>> members(count);
        for (std::uint32_t i = 0; i < lines_.size(); ++i)
            members[columns[i]].push_back(i);
        for (const std::vector<std::uint32_t>& column : members) {
            std::vector<Line> lines;
            std::vector<std::u32string_view> texts;
            for (const std::uint32_t line : column) {
                lines.push_back(lines_[line]);
                texts.push_back(texts_[line]);
            }
            for (Table& table : tablesOf(lines, texts, rulings_)) {
                for (Row& row : table.rows)
                    for (Cell& cell : row.cells)
                        for (std::uint32_t& line : cell)
                            line = column[line];
                tables_.push_back(std::move(table));
            }
        }
    }

    /// Puts lines and tables into reading order, and lines side by side into one row.
    void makeRows() {
        std::vector<std::uint32_t> tableOf(lines_.size(), kNoTable);
        for (std::uint32_t t = 0; t < tables_.size(); ++t)
            for (const Row& row : tables_[t].rows)
                for (const Cell& cell : row.cells)
                    for (const std::uint32_t line : cell)
                        tableOf[line] = t;
        std::vector<Item> items;
        std::vector<std::uint32_t> sources; // a line, or lines_.size() + a table
        std::vector<bool> isListed(tables_.size());
        for (std::uint32_t i = 0; i < lines_.size(); ++i) {
            const std::uint32_t table = tableOf[i];
            if (table == kNoTable) {
                const Line& line = lines_[i];
                items.push_back(itemOf(line, line.size));
                sources.push_back(i);
            } else if (!isListed[table]) {
                isListed[table] = true;
                const Table& t = tables_[table];
                items.push_back(itemOf(t, lines_[i].size));
                sources.push_back(static_cast<std::uint32_t>(lines_.size()) + table);
            }
        }
        for (const std::uint32_t item : readingOrder(items)) {
            const std::uint32_t source = sources[item];
            if (source >= lines_.size()) {
                for (Row& row : tables_[source - lines_.size()].rows)
                    rows_.push_back(std::move(row));
            } else {
                addLine(source);
            }
        }
    }

    /// Of a page that is read from the right, the order is found in its mirror image.
    template <class Box>
    [[nodiscard]] Item itemOf(const Box& box, float size) const {
        if (isFromTheRight_) return {-box.right, -box.left, box.bottom, box.top, size};
        return {box.left, box.right, box.bottom, box.top, size};
    }

    void addLine(std::uint32_t index) {
        const Line& line = lines_[index];
        constexpr float kSameRow = 0.5F;
        if (!rows_.empty() && !rows_.back().isTableRow && verticalOverlap(rows_.back(), line) > kSameRow) {
            Row& row = rows_.back();
            if (isFromTheRight_ ? line.right <= row.left : line.left >= row.right) {
                row.cells.push_back({index});
                extend(row, line);
                return;
            }
        }
        rows_.push_back(rowOf(line, index));
    }

    void appendRow(const Row& row, std::u32string& out) const {
        const std::size_t begin = out.size();
        bool first = true;
        for (std::size_t k = 0; k < row.cells.size(); ++k) {
            const Cell& cell = row.cells[row.isTableRow && isFromTheRight_ ? row.cells.size() - 1 - k : k];
            if (!first) out.push_back(row.isTableRow ? U'\t' : U' ');
            first = false;
            for (std::size_t i = 0; i < cell.size(); ++i) {
                if (i > 0) out.push_back(U' ');
                out.append(texts_[cell[i]]);
            }
        }
        while (out.size() > begin && out.back() == U'\t')
            out.pop_back();
    }

    const Page& page_;
    const Orientation& orientation_;
    bool isFromTheRight_; ///< columns and cells begin at the right
    std::u32string text_;
    std::vector<Line> lines_;
    std::vector<std::u32string_view> texts_;
    std::vector<Ruling> rulings_;
    std::vector<Table> tables_;
    std::vector<Row> rows_;
};

} // namespace

void appendPageText(const Page& page, std::u32string& out) {
    for (const Orientation& orientation : orientationsOf(page))
        OrientationText(page, orientation).append(out);
}

} // namespace quillow::pdf
