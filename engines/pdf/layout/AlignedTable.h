// Tables whose columns are free stripes: the rows that their lines make.
#pragma once

#include "engines/pdf/layout/Band.h"
#include "engines/pdf/layout/Grid.h"
#include "engines/pdf/layout/LineWords.h"
#include "engines/pdf/layout/Stripes.h"
#include "engines/pdf/layout/Table.h"
#include "engines/pdf/layout/TableRows.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// The bands of a page that are one table, and where its columns end.
struct Region {
    std::span<const Band> bands; ///< of the whole page
    std::size_t begin = 0;
    std::size_t end = 0;
    std::span<const Stripe> stripes;
};

class AlignedTable {
public:
    /// `texts` are those of the bands' lines.
    AlignedTable(const Page& page, Orientation& orientation, Lines& found, std::span<const std::u32string_view> texts,
                 LineWords& words, const Region& region)
        : page_(page)
        , orientation_(orientation)
        , found_(found)
        , texts_(texts)
        , words_(words)
        , region_(region) {}

    /// `rulings` are the horizontal ones of the page. Lines that reach over columns are cut: their parts are added to
    /// the found lines.
    [[nodiscard]] Table make(std::span<const Ruling> rulings) &&;

private:
    void addBand(std::uint32_t band);
    void addLine(std::uint32_t line, std::uint32_t band);
    void addFragment(std::uint32_t line, std::uint32_t band, bool isNumeric);
    [[nodiscard]] std::span<Fragment> fragmentsOf(std::size_t begin, std::size_t end);
    void setExtents(Table& table) const;
    void keepRulings(std::span<const Ruling> rulings, const Table& table);
    [[nodiscard]] bool isWide(const Ruling& ruling, const Table& table) const;
    [[nodiscard]] std::size_t endOfHead(const Table& table);
    [[nodiscard]] bool isHead(std::size_t end, bool isRuled);
    [[nodiscard]] std::vector<float> columnMiddles() const;
    void addHead(std::size_t end, Table& table);
    void addBody(std::size_t begin, Table& table);
    void addRow(std::span<const Fragment> fragments, Table& table) const;
    [[nodiscard]] bool continues(std::size_t at) const;

    [[nodiscard]] const Band& band(std::size_t i) const { return region_.bands[region_.begin + i]; }
    [[nodiscard]] std::size_t bandCount() const { return region_.end - region_.begin; }
    [[nodiscard]] std::size_t columnCount() const { return region_.stripes.size() + 1; }

    const Page& page_;
    Orientation& orientation_;
    Lines& found_;
    std::span<const std::u32string_view> texts_;
    LineWords& words_;
    Region region_;
    std::vector<Fragment> fragments_; ///< by bands, which are counted from the region's first one
    std::vector<std::size_t> begins_; ///< of the bands in `fragments_`
    std::vector<Ruling> rulings_;     ///< the horizontal ones in the region
    // Of the line that is added:
    std::vector<Word> pieces_;
    std::vector<float> cuts_;      ///< between its parts
    std::vector<bool> areNumeric_; ///< for each part
};

} // namespace quillow::pdf
