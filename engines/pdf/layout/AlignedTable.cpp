#include "engines/pdf/layout/AlignedTable.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace quillow::pdf {

namespace {

/// Cells reach into the next column by less. In ems.
constexpr float kSlack = 0.3F;
/// A ruling that reaches over so much of a table's width separates rows.
constexpr float kWideShare = 0.8F;
/// A head has at most so many bands.
constexpr std::size_t kMostHeadBands = 7;
/// The bands of a head without a ruling below it are at most so far apart. In ems.
constexpr float kMostHeadGap = 0.6F;
/// So many of the cells below a head without a ruling are numbers.
constexpr float kNumericShare = 0.5F;
/// A row that goes on is nearer to what is above it than to what is below it by so much. In ems.
constexpr float kCloser = 0.1F;
/// What is below the last row of a region is so far away. In ems.
constexpr float kFarBelow = 2.0F;

} // namespace

Table AlignedTable::make(std::span<const Ruling> rulings) && {
    Table table;
    table.rows.reserve(bandCount());
    for (std::size_t i = 0; i < bandCount(); ++i) {
        table.lines.insert(table.lines.end(), band(i).lines.begin(), band(i).lines.end());
        begins_.push_back(fragments_.size());
        addBand(static_cast<std::uint32_t>(i));
    }
    begins_.push_back(fragments_.size());
    setExtents(table);
    keepRulings(rulings, table);
    const std::size_t head = endOfHead(table);
    if (head > 0) addHead(head, table);
    addBody(head, table);
    return table;
}

void AlignedTable::addBand(std::uint32_t index) {
    const std::size_t begin = fragments_.size();
    if (band(index).isMultiple()) {
        for (const std::uint32_t line : band(index).lines)
            addLine(line, index);
    } else {
        pieces_.clear();
        words_.appendPieces(band(index).lines.front(), pieces_);
        addFragment(band(index).lines.front(), index, !pieces_.empty() && pieces_.front().isNumeric());
    }
    const auto first = fragments_.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto isBefore = [](const Fragment& a, const Fragment& b) { return a.column < b.column; };
    if (!std::is_sorted(first, fragments_.end(), isBefore)) std::stable_sort(first, fragments_.end(), isBefore);
}

/// Adds a line, or its pieces in their columns.
void AlignedTable::addLine(std::uint32_t line, std::uint32_t band) {
    pieces_.clear();
    words_.appendPieces(line, pieces_);
    std::vector<float>& cuts = cuts_;
    std::vector<bool>& numeric = areNumeric_;
    cuts.clear();
    numeric.clear();
    std::size_t last = 0;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        const std::size_t column =
            columnsUnder(pieces_[i].left, pieces_[i].right, region_.stripes, kSlack * found_.lines[line].size).first;
        if (!numeric.empty() && column == last) continue;
        if (!numeric.empty()) cuts.push_back((pieces_[i - 1].right + pieces_[i].left) / 2);
        numeric.push_back(pieces_[i].isNumeric());
        last = column;
    }
    if (cuts.empty()) {
        addFragment(line, band, !numeric.empty() && numeric.front());
        return;
    }
    for (Line& part : cutLine(page_, orientation_, found_, line, cuts)) {
        const auto at = static_cast<std::size_t>(
            std::upper_bound(cuts.begin(), cuts.end(), (part.left + part.right) / 2) - cuts.begin());
        found_.lines.push_back(std::move(part));
        addFragment(static_cast<std::uint32_t>(found_.lines.size() - 1), band, numeric[at]);
    }
}

void AlignedTable::addFragment(std::uint32_t index, std::uint32_t band, bool isNumeric) {
    const Line& line = found_.lines[index];
    const auto [column, last] = columnsUnder(line.left, line.right, region_.stripes, kSlack * line.size);
    fragments_.push_back({index, band, static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(last), line.left,
                          line.right, line.bottom, line.top, line.size, isNumeric});
}

std::span<Fragment> AlignedTable::fragmentsOf(std::size_t begin, std::size_t end) {
    return std::span(fragments_).subspan(begins_[begin], begins_[end] - begins_[begin]);
}

void AlignedTable::setExtents(Table& table) const {
    table.left = fragments_.front().left;
    table.right = fragments_.front().right;
    table.bottom = fragments_.front().bottom;
    table.top = fragments_.front().top;
    for (const Fragment& fragment : fragments_) {
        table.left = std::min(table.left, fragment.left);
        table.right = std::max(table.right, fragment.right);
        table.bottom = std::min(table.bottom, fragment.bottom);
        table.top = std::max(table.top, fragment.top);
    }
}

void AlignedTable::keepRulings(std::span<const Ruling> rulings, const Table& table) {
    const auto begin = std::lower_bound(rulings.begin(), rulings.end(), table.bottom,
                                        [](const Ruling& ruling, float at) { return ruling.at < at; });
    for (auto ruling = begin; ruling != rulings.end() && ruling->at < table.top; ++ruling)
        if (ruling->from < table.right && ruling->to > table.left) rulings_.push_back(*ruling);
}

bool AlignedTable::isWide(const Ruling& ruling, const Table& table) const {
    const float common = std::min(ruling.to, table.right) - std::max(ruling.from, table.left);
    return common > kWideShare * (table.right - table.left);
}

/// How many bands are a head of several bands: those above the first ruling through the table, or those before the
/// first numbers.
std::size_t AlignedTable::endOfHead(const Table& table) {
    const Ruling* first = nullptr;
    for (const Ruling& ruling : rulings_)
        if (isWide(ruling, table)) first = &ruling;
    if (first != nullptr) {
        std::size_t end = 0;
        while (end < bandCount() && (band(end).bottom + band(end).top) / 2 > first->at)
            ++end;
        return isHead(end, true) ? end : 0;
    }
    std::size_t end = 0;
    while (end < bandCount()) {
        const std::span<const Fragment> fragments = fragmentsOf(end, end + 1);
        const auto isNumber = [](const Fragment& fragment) { return fragment.column > 0 && fragment.isNumeric; };
        if (std::any_of(fragments.begin(), fragments.end(), isNumber)) break;
        if (end > 0 && gapBetween(band(end - 1), band(end)) > kMostHeadGap) return 0;
        ++end;
    }
    return isHead(end, false) ? end : 0;
}

/// Whether the bands before `end` are lines of one head. Only one line of them has a label in the first column, as a
/// rule: further ones would be rows.
bool AlignedTable::isHead(std::size_t end, bool isRuled) {
    if (end < 2 || end > kMostHeadBands || end >= bandCount()) return false;
    std::size_t labelled = 0;
    std::size_t numeric = 0;
    for (std::size_t i = 0; i < end; ++i) {
        const std::span<const Fragment> fragments = fragmentsOf(i, i + 1);
        labelled += fragments.front().column == 0 && fragments.size() > 1 ? 1 : 0;
    }
    const std::span<const Fragment> body = fragmentsOf(end, bandCount());
    std::size_t cells = 0;
    for (const Fragment& fragment : body) {
        if (fragment.column == 0) continue;
        ++cells;
        numeric += fragment.isNumeric ? 1 : 0;
    }
    const bool isOfNumbers = kNumericShare * static_cast<float>(cells) <= static_cast<float>(numeric) && cells > 1;
    return labelled <= 1 && (isRuled || isOfNumbers);
}

/// Where the columns are, as the cells of single columns show.
std::vector<float> AlignedTable::columnMiddles() const {
    std::vector<std::pair<float, float>> extents(columnCount(), {1, 0});
    for (const Fragment& fragment : fragments_) {
        if (fragment.lastColumn != fragment.column) continue;
        auto& [left, right] = extents[fragment.column];
        const bool isFirst = left > right;
        left = isFirst ? fragment.left : std::min(left, fragment.left);
        right = isFirst ? fragment.right : std::max(right, fragment.right);
    }
    std::vector<float> middles;
    for (std::size_t i = 0; i < extents.size(); ++i) {
        const float middle = (extents[i].first + extents[i].second) / 2;
        const float least = i > 0 ? std::max(middles.back(), region_.stripes[i - 1].middle()) : middle;
        middles.push_back(std::max(middle, least));
    }
    return middles;
}

void AlignedTable::addHead(std::size_t end, Table& table) {
    const std::vector<float> middles = columnMiddles();
    const std::span<Fragment> fragments = fragmentsOf(0, end);
    const std::vector<std::uint32_t> rows = rowsOfHead(fragments, rulings_, middles);
    const std::uint32_t last = *std::max_element(rows.begin(), rows.end());
    for (std::uint32_t row = 0; row <= last; ++row) {
        std::vector<Fragment> members;
        for (std::size_t i = 0; i < fragments.size(); ++i)
            if (rows[i] == row) members.push_back(fragments[i]);
        if (!members.empty()) addRow(members, table);
    }
}

void AlignedTable::addBody(std::size_t begin, Table& table) {
    std::vector<Fragment> fragments;
    fragments.reserve(begins_[bandCount()] - begins_[begin]);
    for (Fragment fragment : fragmentsOf(begin, bandCount())) {
        fragment.band -= static_cast<std::uint32_t>(begin);
        fragments.push_back(fragment);
    }
    const std::vector<bool> joins = centredBands(fragments, bandCount() - begin);
    std::size_t first = begin;
    for (std::size_t i = begin; i < bandCount(); ++i) {
        const bool isLast = i + 1 == bandCount() || (!joins[i + 1 - begin] && !continues(i + 1));
        if (!isLast) continue;
        addRow(fragmentsOf(first, i + 1), table);
        first = i + 1;
    }
}

/// A row of one fragment is a heading inside the table: it has no cells beside it.
void AlignedTable::addRow(std::span<const Fragment> fragments, Table& table) const {
    const Fragment& first = fragments.front();
    Row row = rowOf(found_.lines[first.line], first.line);
    row.isTableRow = true;
    const bool isHeading = std::all_of(fragments.begin(), fragments.end(), [this, &first](const Fragment& fragment) {
        return fragment.column == first.column && !band(fragment.band).isMultiple();
    });
    row.cells.assign(isHeading ? 1 : columnCount(), {});
    for (const Fragment& fragment : fragments) {
        extend(row, found_.lines[fragment.line]);
        row.cells[isHeading ? 0 : fragment.column].push_back(fragment.line);
    }
    table.rows.push_back(std::move(row));
}

/// Whether a band of one line goes on in the cell above it: it is closer than the rows are.
bool AlignedTable::continues(std::size_t at) const {
    if (band(at).isMultiple() || at == 0) return false;
    const Fragment& fragment = fragments_[begins_[at]];
    if (fragment.lastColumn > fragment.column) return false; // reaches over columns
    const float above = gapBetween(band(at - 1), band(at));
    const std::size_t next = region_.begin + at + 1;
    const float below = next < region_.bands.size() ? gapBetween(band(at), region_.bands[next]) : kFarBelow;
    if (above + kCloser < below) return true;
    const std::u32string_view text = texts_[fragment.line];
    const bool goesOn = !text.empty() && ((text.front() >= 'a' && text.front() <= 'z') || text.front() == '(');
    return goesOn && above < below + kCloser;
}

} // namespace quillow::pdf
