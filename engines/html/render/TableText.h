// What separates the cells and rows of tables: HTML, 3.2.7, with the anonymous table parts of CSS 2, section 17.2.1.
#pragma once

#include "engines/Extraction.h"
#include "engines/html/css/Style.h"
#include "engines/html/render/TextCollector.h"
#include "text/ByteScan.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillow::html {

/// Keeps the open boxes, and for each of them the cell and the row that came last. A separator is written when the
/// next part comes, so there is none after the last one. A part need not be in a table: any box may contain cells
/// and rows.
class TableText {
public:
    TableText(TextCollector& collector, CellSeparator separator)
        : collector_(collector)
        , separator_(separator) {
        boxes_.reserve(kUsualDepth);
        boxes_.emplace_back();
    }

    /// Opens a box inside of the current box. Elements without a box (`display: contents`) are not entered.
    void enter(Display display, Visibility visibility) {
        const bool isPart = display == Display::tableCell || display == Display::tableRow;
        if (isPart || followsPart()) separate(display, visibility);
        const auto index = static_cast<std::uint32_t>(boxes_.size());
        const std::uint32_t table = display == Display::tableRowGroup ? boxes_.back().table : index;
        boxes_.push_back({display, Neighbour::none, Neighbour::none, table});
    }
    void leave() { boxes_.pop_back(); }

    /// Called before the characters of a text node in the current box.
    void beforeText(std::string_view text, WhiteSpace whiteSpace) {
        if (!followsPart()) return;
        if (whiteSpace == WhiteSpace::normal && text::skipBlanks(text, 0) == text.size()) return;
        leaveCells();
        leaveRows();
    }

private:
    enum class Neighbour : std::uint8_t { none, visible, hidden };
    struct Box {
        Display display = Display::block;
        Neighbour previousCell = Neighbour::none; ///< the last cell that is a child of this box
        Neighbour previousRow = Neighbour::none;  ///< the last row in this box, also in its row groups
        std::uint32_t table = 0; ///< index of the box that keeps track of the rows in this one, usually itself
    };
    static constexpr std::size_t kUsualDepth = 64;

    [[nodiscard]] Box& row() { return boxes_.back(); }
    [[nodiscard]] Box& table() { return boxes_[boxes_.back().table]; }
    [[nodiscard]] bool followsPart() {
        return row().previousCell != Neighbour::none || table().previousRow != Neighbour::none;
    }
    void separate(Display display, Visibility visibility);
    void openCell(Visibility visibility);
    void openRow(Visibility visibility);
    void leaveCells();
    void leaveRows();
    void writeCellSeparator();

    TextCollector& collector_;
    CellSeparator separator_;
    std::vector<Box> boxes_; ///< the first one is around the document
};

} // namespace quillow::html
