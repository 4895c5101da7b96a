#include "engines/pdf/OutcomeRows.h"

#include "engines/pdf/layout/RowText.h"
#include "text/TextSink.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

/// The first row of a column is indented if the row below it begins so far before it. In ems.
constexpr float kLeastIndent = 0.7F;

bool isBelow(const TextRow& above, const TextRow& row) {
    const float indent = 3 * std::min(above.size, row.size); // lines of a term may begin behind its end
    return row.orientation == above.orientation && row.baseline < above.baseline && row.left < above.right + indent &&
           above.left < row.right + indent;
}

std::uint16_t flagsOf(const PageLayout& layout, std::size_t index) {
    const TextRow& row = layout.rows[index];
    const std::u32string_view text = layout.textOf(row);
    unsigned flags = 0;
    const auto set = [&flags](bool isSet, OutcomeRowFlag flag) {
        if (isSet) flags |= flag;
    };
    const bool below = index > 0 && isBelow(layout.rows[index - 1], row);
    set(row.isTableRow, kTableRow);
    set(row.continuesTable, kContinuesTable);
    set(row.beginsParagraph, kBeginsParagraph);
    set(row.beginsLine, kBeginsLine);
    set(row.isMonospaced, kMonospaced);
    set(below, kBelow);
    set(endsSentence(text), kEndsSentence);
    set(listSignOf(text) != ListSign::none, kListItem);
    set(row.endsInSoftHyphen, kSoftHyphen);
    set(row.orientation == 0, kMainText);
    if (!text.empty()) {
        set(isSmallLetter(text.front()), kBeginsSmall);
        set(isSetSolid(text.front()), kBeginsSolid);
        set(isSetSolid(text.back()), kEndsSolid);
    }
    if (!below && index + 1 < layout.rows.size() && isBelow(row, layout.rows[index + 1])) {
        const TextRow& next = layout.rows[index + 1];
        const bool isFromTheRight = layout.orientations[row.orientation].isFromTheRight;
        const float indent = isFromTheRight ? next.right - row.right : row.left - next.left;
        set(indent > kLeastIndent * row.size, kFirstIndented);
    }
    return static_cast<std::uint16_t>(flags);
}

} // namespace

void describeRows(const PageLayout& layout, PageOutcome& outcome) {
    outcome.rows.reserve(layout.rows.size());
    text::TextSink sink;
    for (std::size_t i = 0; i < layout.rows.size(); ++i) {
        const TextRow& row = layout.rows[i];
        OutcomeRow& described = outcome.rows.emplace_back();
        described.begin = static_cast<std::uint32_t>(sink.size());
        sink.append(layout.textOf(row));
        described.end = static_cast<std::uint32_t>(sink.size());
        sink.appendAscii('\n');
        described.baseline = row.baseline;
        described.size = row.size;
        described.room = row.room;
        described.flags = flagsOf(layout, i);
    }
    outcome.text = sink.view();
}

} // namespace quillow::pdf
