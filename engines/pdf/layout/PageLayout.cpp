#include "engines/pdf/layout/PageLayout.h"

#include "engines/pdf/layout/Bidi.h"
#include "engines/pdf/layout/Columns.h"
#include "engines/pdf/layout/Line.h"
#include "engines/pdf/layout/LineText.h"
#include "engines/pdf/layout/MarginNotes.h"
#include "engines/pdf/layout/MonospacedFonts.h"
#include "engines/pdf/layout/Order.h"
#include "engines/pdf/layout/Paragraphs.h"
#include "engines/pdf/layout/RepeatedColumns.h"
#include "engines/pdf/layout/Row.h"
#include "engines/pdf/layout/Span.h"
#include "engines/pdf/layout/Table.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillow::pdf {

namespace {

constexpr std::uint32_t kNoTable = std::numeric_limits<std::uint32_t>::max();

/// Lays the text of one writing direction out.
class OrientationLayout {
public:
    OrientationLayout(const Page& page, bool isPageFromTheRight, Orientation& orientation,
                      const MonospacedFonts& monospaced, Evidence* evidence)
        : page_(page)
        , orientation_(orientation)
        , monospaced_(monospaced)
        , evidence_(evidence)
        , isPageFromTheRight_(isPageFromTheRight)
        , isFromTheRight_(!orientation.isVertical && isPageFromTheRight) {}

    void append(PageLayout& layout) && {
        if (evidence_ != nullptr) evidence_->setFrame(orientation_.frame);
        makeLines();
        if (found_.lines.empty()) return;
        makeRulings();
        tables_ = tablesOf(page_, orientation_, found_, texts_, rulings_, evidence_);
        writeParts();
        makeRows();
        describeRows();
        markParagraphs(rows_, isFromTheRight_ ? Side::right : Side::left, evidence_);
        if (evidence_ != nullptr) showTables(*evidence_);
        const auto orientation = static_cast<std::uint16_t>(layout.orientations.size());
        layout.orientations.push_back({orientation_.frame, orientation_.isVertical, isFromTheRight_});
        layout.rows.reserve(layout.rows.size() + rows_.size());
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const Row& row = rows_[i];
            const bool beginsParagraph = i > 0 && row.beginsParagraph && !row.continuesTable;
            if (beginsParagraph) layout.text.push_back(U'\n');
            TextRow& written = layout.rows.emplace_back();
            written.textBegin = static_cast<std::uint32_t>(layout.text.size());
            appendRow(row, layout.text);
            written.textEnd = static_cast<std::uint32_t>(layout.text.size());
            layout.text.push_back(U'\n');
            written.left = row.left;
            written.right = row.right;
            written.bottom = row.bottom;
            written.top = row.top;
            written.baseline = row.baseline;
            written.size = row.size;
            written.orientation = orientation;
            written.isTableRow = row.isTableRow;
            written.continuesTable = row.continuesTable;
            written.beginsParagraph = beginsParagraph;
            written.beginsLine = row.beginsLine;
            written.isMonospaced = row.isMonospaced;
            written.endsInSoftHyphen = row.endsInSoftHyphen;
            written.room = row.room;
            written.indent = row.indent;
        }
    }

private:
    /// The lines that have text, and their text.
    void makeLines() {
        LineWriter writer(page_, orientation_, isPageFromTheRight_, evidence_);
        found_ = linesOf(orientation_);
        unweaveColumns(found_.lines, evidence_);
        std::size_t kept = 0;
        for (const Line& line : found_.lines) {
            const std::size_t begin = text_.size();
            writer.append(found_.spansOf(line), text_);
            if (text_.size() == begin) continue;
            ends_.push_back(text_.size());
            found_.lines[kept++] = line;
        }
        found_.lines.resize(kept);
        wholeLines_ = kept;
        viewTexts();
    }

    /// The text of the lines that the search for tables added.
    void writeParts() {
        if (found_.lines.size() == wholeLines_) return;
        LineWriter writer(page_, orientation_, isPageFromTheRight_);
        for (std::size_t i = wholeLines_; i < found_.lines.size(); ++i) {
            writer.append(found_.spansOf(found_.lines[i]), text_);
            ends_.push_back(text_.size());
        }
        viewTexts();
    }

    void viewTexts() {
        texts_.clear();
        std::size_t begin = 0;
        for (const std::size_t end : ends_) {
            texts_.push_back(std::u32string_view(text_).substr(begin, end - begin));
            begin = end;
        }
    }

    /// Lines, and the edges of boxes that are not the background of text or of the page.
    void makeRulings() {
        struct Rectangle {
            float left, right, bottom, top;
        };
        const Frame& frame = orientation_.frame;
        std::vector<Rectangle> boxes;
        for (const Rule& rule : page_.rules) {
            const Point a{rule.box.left, rule.box.bottom};
            const Point b{rule.box.right, rule.box.top};
            const auto [left, right] = std::minmax({frame.alongOf(a), frame.alongOf(b)});
            const auto [bottom, top] = std::minmax({frame.upOf(a), frame.upOf(b)});
            constexpr float kThick = 4; // points; thicker ones are bars and backgrounds
            constexpr float kShortest = 4;
            const bool isWide = right - left >= kShortest;
            const bool isHigh = top - bottom >= kShortest;
            if (isWide && top - bottom < kThick) {
                rulings_.horizontal.push_back({(bottom + top) / 2, left, right});
            } else if (isHigh && right - left < kThick) {
                rulings_.vertical.push_back({(left + right) / 2, bottom, top});
            } else if (isWide && isHigh) {
                boxes.push_back({left, right, bottom, top});
            }
        }
        joinRulings(rulings_.horizontal);
        joinRulings(rulings_.vertical);
        if (boxes.empty()) return;
        const std::vector<Grid> grids = gridsOf(rulings_);
        constexpr float kPageShare = 0.4F; // boxes over so much of the page are its background, or a frame around it
        const float most = kPageShare * page_.cropBox.width() * page_.cropBox.height();
        for (const Rectangle& box : boxes) {
            const auto [left, right, bottom, top] = box;
            if (most > 0 && (right - left) * (top - bottom) > most) continue;
            const auto isBackground = [&box](const Grid& grid) {
                return grid.isBackground(box.left, box.right, box.bottom, box.top);
            };
            if (std::any_of(grids.begin(), grids.end(), isBackground)) continue;
            rulings_.horizontal.insert(rulings_.horizontal.end(), {{bottom, left, right}, {top, left, right}});
            rulings_.vertical.insert(rulings_.vertical.end(), {{left, bottom, top}, {right, bottom, top}});
        }
        joinRulings(rulings_.horizontal);
        joinRulings(rulings_.vertical);
    }

    /// Puts lines and tables into reading order, and lines side by side into one row.
    void makeRows() {
        std::vector<std::uint32_t> tableOf(found_.lines.size(), kNoTable);
        for (std::uint32_t t = 0; t < tables_.size(); ++t)
            for (const std::uint32_t line : tables_[t].lines)
                tableOf[line] = t;
        std::vector<Item> items;
        std::vector<std::uint32_t> sources; // a line, or found_.lines.size() + a table
        std::vector<bool> isListed(tables_.size());
        for (std::uint32_t i = 0; i < wholeLines_; ++i) {
            const std::uint32_t table = tableOf[i];
            if (table == kNoTable) {
                const Line& line = found_.lines[i];
                items.push_back(itemOf(line, line.size));
                sources.push_back(i);
            } else if (!isListed[table]) {
                isListed[table] = true;
                const Table& t = tables_[table];
                items.push_back(itemOf(t, found_.lines[i].size));
                sources.push_back(static_cast<std::uint32_t>(found_.lines.size()) + table);
            }
        }
        if (evidence_ != nullptr) evidence_->setMirrored(isFromTheRight_);
        std::vector<std::uint32_t> order = readingOrder(items, sourceOfText(), evidence_);
        if (evidence_ != nullptr) evidence_->setMirrored(false);
        placeMarginNotes(items, order);
        for (const std::uint32_t item : order) {
            const std::uint32_t source = sources[item];
            if (source >= found_.lines.size()) {
                addTable(tables_[source - found_.lines.size()]);
            } else {
                addLine(source);
            }
        }
    }

    /// The text layer of a scan is invisible.
    [[nodiscard]] TextSource sourceOfText() const {
        const auto isInvisible = [this](const Span& span) { return (page_.runs[span.run].flags & kInvisible) != 0; };
        return std::all_of(orientation_.spans.begin(), orientation_.spans.end(), isInvisible) ? TextSource::recogniser
                                                                                              : TextSource::program;
    }

    /// A table is read from the side of its letters; one without letters from the side of its page.
    void addTable(Table& table) {
        bool isFromTheRight = isFromTheRight_;
        if (isFromTheRight) {
            std::u32string letters;
            for (const Row& row : table.rows)
                forEachCell(row, [this, &letters](std::span<const std::uint32_t> cell) {
                    for (const std::uint32_t line : cell)
                        letters.append(texts_[line]);
                });
            const bool hasLatin = std::any_of(letters.begin(), letters.end(),
                                              [](char32_t c) { return directionOf(c) == Direction::left; });
            isFromTheRight = !hasLatin || isMostlyFromTheRight(letters);
        }
        unfoldColumns(table.rows, texts_);
        bool isFirst = true;
        for (Row& row : table.rows) {
            row.isFromTheRight = isFromTheRight;
            row.continuesTable = !isFirst;
            isFirst = false;
            rows_.push_back(std::move(row));
        }
    }

    /// Of a page that is read from the right, the order is found in its mirror image.
    template <class Box>
    [[nodiscard]] Item itemOf(const Box& box, float size) const {
        if (isFromTheRight_) return {-box.right, -box.left, box.bottom, box.top, size};
        return {box.left, box.right, box.bottom, box.top, size};
    }

    void addLine(std::uint32_t index) {
        const Line& line = found_.lines[index];
        constexpr float kSameRow = 0.5F;
        if (!rows_.empty() && !rows_.back().isTableRow && verticalOverlap(rows_.back(), line) > kSameRow) {
            Row& row = rows_.back();
            if (isFromTheRight_ ? line.right <= row.left : line.left >= row.right) {
                if (row.cells.empty()) row.cells.emplace_back(row.line);
                row.cells.emplace_back(index);
                extend(row, line);
                return;
            }
        }
        rows_.push_back(rowOf(line, index));
    }

    /// Says of each row what it begins and ends with, and in which font it is.
    void describeRows() {
        for (Row& row : rows_) {
            bool isFirst = true;
            row.isMonospaced = true;
            const Span* last = nullptr;
            forEachCell(row, [&](std::span<const std::uint32_t> cell) {
                for (const std::uint32_t index : cell) {
                    if (isFirst) row.begin = texts_[index];
                    row.end = texts_[index];
                    for (const std::uint32_t span : found_.spansOf(found_.lines[index])) {
                        last = &orientation_.spans[span];
                        const std::uint32_t font = page_.runs[last->run].font;
                        if (isFirst) row.font = font;
                        isFirst = false;
                        if (font != row.font) row.isOneFont = false;
                        if (row.isMonospaced && !monospaced_.contains(font)) row.isMonospaced = false;
                    }
                }
            });
            row.endsInSoftHyphen = last != nullptr && endsInSoftHyphen(*last);
        }
    }

    [[nodiscard]] bool endsInSoftHyphen(const Span& span) const {
        constexpr char32_t kSoftHyphen = 0x00AD;
        const std::size_t next = std::size_t{span.firstGlyph} + span.glyphCount;
        const std::size_t end = next < page_.glyphs.size() ? page_.glyphs[next].text : page_.text.size();
        return end > 0 && end <= page_.text.size() && page_.text[end - 1] == kSoftHyphen;
    }

    void appendRow(const Row& row, std::u32string& out) const {
        const std::size_t begin = out.size();
        if (row.cells.empty()) out.append(texts_[row.line]);
        bool first = true;
        for (std::size_t k = 0; k < row.cells.size(); ++k) {
            const Cell& cell = row.cells[row.isFromTheRight ? row.cells.size() - 1 - k : k];
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

    /// The rulings, and the cells of the tables.
    void showTables(Evidence& evidence) const {
        for (const Ruling& ruling : rulings_.horizontal)
            evidence.show(Topic::ruling, Box{ruling.from, ruling.at, ruling.to, ruling.at});
        for (const Ruling& ruling : rulings_.vertical)
            evidence.show(Topic::ruling, Box{ruling.at, ruling.from, ruling.at, ruling.to});
        for (const Row& row : rows_) {
            for (const Cell& cell : row.cells) { // tables have them
                if (!row.isTableRow || cell.empty()) continue;
                const Line& first = found_.lines[cell.front()];
                Box area{first.left, first.bottom, first.right, first.top};
                for (const std::uint32_t line : cell) {
                    area.extendTo({found_.lines[line].left, found_.lines[line].bottom});
                    area.extendTo({found_.lines[line].right, found_.lines[line].top});
                }
                evidence.show(Topic::cell, area);
            }
        }
    }

    const Page& page_;
    Orientation& orientation_;
    const MonospacedFonts& monospaced_;
    Evidence* evidence_;
    bool isPageFromTheRight_;
    bool isFromTheRight_; ///< columns and cells begin at the right
    std::u32string text_;
    std::vector<std::size_t> ends_; ///< of the lines' texts
    Lines found_;                   ///< those of the page, then parts of them
    std::size_t wholeLines_ = 0;
    std::vector<std::u32string_view> texts_;
    Rulings rulings_;
    std::vector<Table> tables_;
    std::vector<Row> rows_;
};

} // namespace

void layOut(const Page& page, PageLayout& layout, Evidence* evidence) {
    layout.clear();
    std::vector<Orientation> orientations = orientationsOf(page);
    const MonospacedFonts monospaced(page);
    const bool isPageFromTheRight = isMostlyFromTheRight(page.text);
    for (Orientation& orientation : orientations)
        OrientationLayout(page, isPageFromTheRight, orientation, monospaced, evidence).append(layout);
}

} // namespace quillow::pdf
