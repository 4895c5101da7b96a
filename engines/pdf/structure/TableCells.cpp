#include "engines/pdf/structure/TableCells.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace quillow::pdf {

namespace {

/// Marked-content sequences of a page; those with higher numbers are in no table.
constexpr std::size_t kMostSequences = 65'536;
/// Names of roles that lead to one another.
constexpr int kMostRoles = 8;

/// Cells of one row have a baseline in common, but for so much. In ems.
constexpr float kSameBaseline = 0.5F;

/// Whether two runs are different marked content in one line. The runs of a table are somewhere.
bool mayBeCells(const Run& a, const Run& b) {
    if (a.markedContent == b.markedContent || a.markedContent == Run::kNoMark || b.markedContent == Run::kNoMark)
        return false;
    const Point step{b.origin.x - a.origin.x, b.origin.y - a.origin.y};
    return std::abs(step.y * a.direction.x - step.x * a.direction.y) < kSameBaseline * a.fontSize;
}

} // namespace

void TableCells::find(const PageNode& node, Page& page) {
    page.cells.clear();
    if (std::adjacent_find(page.runs.begin(), page.runs.end(), mayBeCells) == page.runs.end()) return;
    readParentTree();
    if (pages_.empty()) return;
    const Object parents = parentsOf(document_.get(node.dictionary, "StructParents").integerOr(-1));
    const std::span<const Object> elements = parents.array();
    std::vector<CellMark> cells(std::min(elements.size(), kMostSequences));
    bool any = false;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells[i] = cellAround(elements[i]);
        any = any || cells[i].table != CellMark::kNoTable;
    }
    if (any) page.cells = std::move(cells);
}

/// Lists the entries of the parent tree, a number tree (7.9.7).
void TableCells::readParentTree() {
    if (isRead_) return;
    isRead_ = true;
    const Dictionary root = document_.get(document_.catalog(), "StructTreeRoot").dictionary();
    if (root.empty()) return;
    roleMap_ = document_.get(root, "RoleMap").dictionary();
    std::vector<std::pair<Object, std::size_t>> nodes{{root.find("ParentTree"), 0}};
    while (!nodes.empty() && looked_ < kMaximumStructureElements) {
        const auto [object, depth] = nodes.back();
        nodes.pop_back();
        const Dictionary node = document_.resolve(object).dictionary();
        ++looked_;
        const std::span<const Object> numbers = document_.get(node, "Nums").array();
        for (std::size_t i = 0; i + 1 < numbers.size() && looked_ < kMaximumStructureElements; i += 2, ++looked_)
            pages_.push_back({numbers[i].integerOr(-1), numbers[i + 1]});
        if (depth == kMaximumStructureDepth) continue;
        for (const Object& kid : document_.get(node, "Kids").array()) {
            if (++looked_ >= kMaximumStructureElements) break;
            nodes.emplace_back(kid, depth + 1);
        }
    }
    std::stable_sort(pages_.begin(), pages_.end(),
                     [](const PageMarks& a, const PageMarks& b) { return a.key < b.key; });
}

Object TableCells::parentsOf(std::int64_t key) const {
    const auto found = std::lower_bound(pages_.begin(), pages_.end(), key,
                                        [](const PageMarks& marks, std::int64_t wanted) { return marks.key < wanted; });
    if (key < 0 || found == pages_.end() || found->key != key) return {};
    return document_.resolve(found->elements);
}

TableCells::Role TableCells::roleOf(const Dictionary& element) {
    std::string_view name = document_.get(element, "S").name();
    for (int i = 0; i < kMostRoles; ++i) {
        if (name == "TD" || name == "TH") return Role::cell;
        if (name == "TR") return Role::row;
        if (name == "THead" || name == "TBody" || name == "TFoot") return Role::section;
        if (name == "Table") return Role::table;
        const Object mapped = roleMap_.find(name);
        if (mapped.type() != Object::Type::name) break;
        name = mapped.name();
    }
    return Role::other;
}

/// Goes up from an element to the innermost cell around it.
CellMark TableCells::cellAround(const Object& element) {
    std::array<std::uint32_t, kMaximumStructureDepth> passed{};
    std::size_t count = 0;
    CellMark found;
    Reference at = element.reference();
    while (count < passed.size() && at.number != 0 && looked_ < kMaximumStructureElements) {
        if (const auto known = cellsOfElements_.find(at.number); known != cellsOfElements_.end()) {
            found = known->second;
            break;
        }
        ++looked_;
        passed[count++] = at.number;
        const Dictionary dictionary = document_.load(at).dictionary();
        const Reference parent = dictionary.find("P").reference();
        if (roleOf(dictionary) != Role::cell) {
            at = parent;
            continue;
        }
        // A cell is in a row, and that in a table or in a section of one.
        Reference table = document_.load(parent).dictionary().find("P").reference();
        if (roleOf(document_.load(table).dictionary()) == Role::section)
            table = document_.load(table).dictionary().find("P").reference();
        addTable(table);
        if (const auto cell = cells_.find(at.number); cell != cells_.end()) found = cell->second;
        break;
    }
    for (std::size_t i = 0; i < count; ++i)
        cellsOfElements_.emplace(passed[i], found);
    return found;
}

/// Gives each cell of a table its row and column.
void TableCells::addTable(Reference table) {
    if (!isTableKnown_.emplace(table.number, true).second) return;
    const Dictionary dictionary = document_.load(table).dictionary();
    if (roleOf(dictionary) != Role::table) return;
    rowsTaken_.clear();
    std::uint32_t row = 0;
    addRows(dictionary, tables_++, row);
}

template <class Visit>
void TableCells::forEachChild(const Dictionary& element, Visit&& visit) {
    const Object children = document_.get(element, "K");
    const Object only = element.find("K");
    const bool isOne = children.type() == Object::Type::dictionary;
    for (const Object& child : isOne ? std::span(&only, 1) : children.array()) {
        if (++looked_ >= kMaximumStructureElements) return;
        visit(child.reference(), document_.resolve(child).dictionary());
    }
}

void TableCells::addRows(const Dictionary& parent, std::uint32_t table, std::uint32_t& row) {
    forEachChild(parent, [&](Reference, const Dictionary& child) {
        switch (roleOf(child)) {
        case Role::row: addCells(child, {table, row++, 0}); break;
        case Role::section:
            forEachChild(child, [&](Reference, const Dictionary& inner) {
                if (roleOf(inner) == Role::row) addCells(inner, {table, row++, 0});
            });
            break;
        default: break;
        }
    });
}

void TableCells::addCells(const Dictionary& row, CellMark place) {
    forEachChild(row, [&](Reference reference, const Dictionary& child) {
        if (roleOf(child) != Role::cell) return;
        while (place.column < rowsTaken_.size() && rowsTaken_[place.column] > place.row)
            ++place.column;
        const std::size_t end = place.column + spanOf(child, "ColSpan");
        if (end > kMaximumTableColumns) return;
        if (end > rowsTaken_.size()) rowsTaken_.resize(end);
        const auto below = place.row + static_cast<std::uint32_t>(spanOf(child, "RowSpan"));
        std::fill(rowsTaken_.begin() + place.column, rowsTaken_.begin() + static_cast<std::ptrdiff_t>(end), below);
        if (reference.number != 0) cells_.emplace(reference.number, place);
        place.column = static_cast<std::uint32_t>(end);
    });
}

/// How many columns or rows a cell reaches over (14.8.5.7).
std::size_t TableCells::spanOf(const Dictionary& cell, std::string_view key) {
    const Object attributes = document_.get(cell, "A");
    const auto in = [&](const Object& object) {
        return document_.get(document_.resolve(object).dictionary(), key).integerOr(0);
    };
    std::int64_t span = in(attributes);
    for (const Object& object : attributes.array().first(std::min<std::size_t>(attributes.array().size(), 8)))
        span = std::max(span, in(object));
    return static_cast<std::size_t>(std::clamp<std::int64_t>(span, 1, kMaximumTableColumns));
}

} // namespace quillow::pdf
