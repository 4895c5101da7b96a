// The tables of a document's structure tree (ISO 32000-2, 14.7, 14.8.4.8.3): which marked content is in which cell.
#pragma once

#include "engines/pdf/content/Page.h"
#include "engines/pdf/syntax/PageTree.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace quillow::pdf {

/// Elements of a structure tree, and entries of its parent tree, that are looked at for one document. Long reports have
/// some hundred thousand.
inline constexpr std::size_t kMaximumStructureElements = 1'000'000;
/// Elements inside one another, and nodes of the parent tree; whatever is deeper is left out.
inline constexpr std::size_t kMaximumStructureDepth = 64;
/// Columns of a table; cells further to the right are left out.
inline constexpr std::size_t kMaximumTableColumns = 200;

/// Looks cells up for one page after another. Nothing of the structure tree is read before a page has different marked
/// content in one line, and then only what leads from its content to the tables.
class TableCells {
public:
    /// The document must outlive this.
    explicit TableCells(Document& document)
        : document_(document) {}

    /// Sets `page.cells`. Leaves it empty if no content of the page is in a table of the structure tree.
    void find(const PageNode& node, Page& page);

private:
    enum class Role : std::uint8_t { other, cell, row, section, table };
    struct PageMarks {
        std::int64_t key = 0; ///< the page's /StructParents
        Object elements;      ///< the parent of each marked-content sequence
    };

    void readParentTree();
    [[nodiscard]] Object parentsOf(std::int64_t key) const;
    [[nodiscard]] Role roleOf(const Dictionary& element);
    [[nodiscard]] CellMark cellAround(const Object& element);
    void addTable(Reference table);
    void addRows(const Dictionary& parent, std::uint32_t table, std::uint32_t& row);
    void addCells(const Dictionary& row, CellMark place);
    [[nodiscard]] std::size_t spanOf(const Dictionary& cell, std::string_view key);
    template <class Visit>
    void forEachChild(const Dictionary& element, Visit&& visit);

    Document& document_;
    bool isRead_ = false;
    std::vector<PageMarks> pages_; ///< by key
    Dictionary roleMap_;
    std::size_t looked_ = 0; ///< so many elements and entries
    std::uint32_t tables_ = 0;
    std::unordered_map<std::uint32_t, bool> isTableKnown_;        ///< by object number
    std::unordered_map<std::uint32_t, CellMark> cells_;           ///< of cells, by object number
    std::unordered_map<std::uint32_t, CellMark> cellsOfElements_; ///< of other elements
    std::vector<std::uint32_t> rowsTaken_;                        ///< for each column the first row that is free
};

} // namespace quillow::pdf
