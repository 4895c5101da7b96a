#include "engines/pdf/layout/RepeatedColumns.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace quillow::pdf {

namespace {

/// A heading and its values below it are two columns and two rows: fewer are no folded table.
constexpr std::size_t kLeastColumns = 2;
constexpr std::size_t kLeastRows = 4;

std::u32string textOf(const Cell& cell, std::span<const std::u32string_view> texts) {
    std::u32string text;
    for (const std::uint32_t line : cell) {
        text.append(texts[line]);
        text.push_back(U' ');
    }
    return text;
}

/// After how many columns the headings are repeated; 0 if they are not.
std::size_t periodOf(const std::vector<std::u32string>& headings) {
    for (std::size_t period = kLeastColumns; 2 * period <= headings.size(); ++period) {
        if (headings.size() % period != 0) continue;
        bool isRepeated = true;
        for (std::size_t i = 0; i < headings.size() && isRepeated; ++i)
            isRepeated = !headings[i].empty() && headings[i] == headings[i % period];
        if (isRepeated && headings.front() != headings[1]) return period;
    }
    return 0;
}

} // namespace

void unfoldColumns(std::vector<Row>& rows, std::span<const std::u32string_view> texts) {
    if (rows.size() < kLeastRows) return;
    std::vector<std::u32string> headings;
    for (const Cell& cell : rows.front().cells)
        headings.push_back(textOf(cell, texts));
    const std::size_t period = periodOf(headings);
    if (period == 0) return;
    const auto isWhole = [&headings](const Row& row) { return row.cells.size() == headings.size(); };
    if (!std::all_of(rows.begin(), rows.end(), isWhole)) return;
    std::vector<Row> unfolded;
    for (std::size_t begin = 0; begin < headings.size(); begin += period) {
        for (const Row& row : rows) {
            const auto from = row.cells.begin() + static_cast<std::ptrdiff_t>(begin);
            const auto to = from + static_cast<std::ptrdiff_t>(period);
            if (std::all_of(from, to, [](const Cell& cell) { return cell.empty(); })) continue;
            Row part = row;
            part.cells.assign(from, to);
            unfolded.push_back(std::move(part));
        }
    }
    rows = std::move(unfolded);
}

} // namespace quillow::pdf
