#include "engines/html/render/TableText.h"

namespace quillow::html {

namespace {

/// Whether a display type is that of a table or of a table part that contains other parts.
bool isInsideTable(Display display) {
    return display == Display::table || display == Display::inlineTable || display == Display::tableRowGroup ||
           display == Display::tableRow;
}

} // namespace

/// Writes the separators that are due before a box.
void TableText::separate(Display display, Visibility visibility) {
    if (display == Display::tableCell) {
        openCell(visibility);
    } else if (row().previousCell != Neighbour::none) {
        leaveCells();
    }
    if (display == Display::tableRow) {
        openRow(visibility);
    } else if (table().previousRow != Neighbour::none) {
        if (display == Display::tableRowGroup) {
            collector_.endLine();
        } else if (display != Display::tableCaption) {
            leaveRows();
        }
    }
}

/// 3.2.7: a TAB after each cell except the last of its row.
void TableText::openCell(Visibility visibility) {
    Neighbour& previous = row().previousCell;
    if (previous != Neighbour::none) collector_.endLine();
    if (previous == Neighbour::visible) writeCellSeparator();
    previous = visibility == Visibility::visible ? Neighbour::visible : Neighbour::hidden;
}

/// 3.2.7: a line end after each row except the last of its table.
void TableText::openRow(Visibility visibility) {
    Neighbour& previous = table().previousRow;
    if (previous != Neighbour::none) collector_.endLine();
    if (previous == Neighbour::visible) collector_.literal('\n');
    previous = visibility == Visibility::visible ? Neighbour::visible : Neighbour::hidden;
}

/// CSS 2, 17.2.1: content that is not a cell gets an anonymous cell. As in browsers, the cell before it is then not
/// the last one. Outside of a table such content separates two tables.
void TableText::leaveCells() {
    if (isInsideTable(row().display) && row().previousCell == Neighbour::visible) writeCellSeparator();
    row().previousCell = Neighbour::none;
}

/// The same for content that is not a row.
void TableText::leaveRows() {
    Box& box = table();
    if (isInsideTable(box.display) && box.display != Display::tableRow && box.previousRow == Neighbour::visible)
        collector_.literal('\n');
    box.previousRow = Neighbour::none;
}

void TableText::writeCellSeparator() {
    collector_.literal(separator_ == CellSeparator::tab ? '\t' : '\n');
}

} // namespace quillow::html
