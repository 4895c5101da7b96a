// Which pages of a document are read.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillow {

struct PageRange {
    std::uint32_t first = 1; ///< pages count from 1
    std::uint32_t last = 1;  ///< kLastPage: to the end of the document

    static constexpr std::uint32_t kLastPage = 0xFFFF'FFFF;

    friend bool operator==(const PageRange&, const PageRange&) = default;
};

/// A set of pages. The default is every page.
class PageSelection {
public:
    PageSelection() = default;
    /// Every page that one of the ranges has; their order does not matter. Without a range, every page.
    explicit PageSelection(std::vector<PageRange> ranges);

    [[nodiscard]] bool isEveryPage() const { return ranges_.empty(); }
    [[nodiscard]] bool contains(std::uint32_t page) const;
    /// In ascending order; no two of them touch.
    [[nodiscard]] const std::vector<PageRange>& ranges() const { return ranges_; }

private:
    std::vector<PageRange> ranges_;
};

/// Parses "3-7,12,20-": pages and ranges, separated by commas. Either end of a range may be left out, but not both.
/// std::nullopt if the text is anything else, a page is 0, or a range runs backwards.
[[nodiscard]] std::optional<PageSelection> parsePageSelection(std::string_view text);

} // namespace quillow
