#include "engines/PageSelection.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace quillow {

namespace {

/// A page number; the value for no text.
std::optional<std::uint32_t> pageOf(std::string_view text, std::uint32_t absent) {
    if (text.empty()) return absent;
    std::uint32_t page = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, page);
    if (error != std::errc() || stop != end || page == 0) return std::nullopt;
    return page;
}

std::optional<PageRange> rangeOf(std::string_view text) {
    if (text.empty() || text == "-") return std::nullopt;
    const std::size_t dash = text.find('-');
    const auto first = pageOf(text.substr(0, dash), 1);
    const auto last = dash == std::string_view::npos ? first : pageOf(text.substr(dash + 1), PageRange::kLastPage);
    if (!first || !last || *first > *last) return std::nullopt;
    return PageRange{*first, *last};
}

} // namespace

PageSelection::PageSelection(std::vector<PageRange> ranges) {
    std::sort(ranges.begin(), ranges.end(), [](const PageRange& a, const PageRange& b) {
        return std::pair(a.first, a.last) < std::pair(b.first, b.last);
    });
    for (const PageRange& range : ranges) {
        const bool touches =
            !ranges_.empty() && (ranges_.back().last == PageRange::kLastPage || range.first <= ranges_.back().last + 1);
        if (touches)
            ranges_.back().last = std::max(ranges_.back().last, range.last);
        else
            ranges_.push_back(range);
    }
}

bool PageSelection::contains(std::uint32_t page) const {
    if (isEveryPage()) return true;
    const auto after = std::upper_bound(ranges_.begin(), ranges_.end(), page,
                                        [](std::uint32_t p, const PageRange& range) { return p < range.first; });
    return after != ranges_.begin() && page <= std::prev(after)->last;
}

std::optional<PageSelection> parsePageSelection(std::string_view text) {
    std::vector<PageRange> ranges;
    while (true) {
        const std::size_t comma = text.find(',');
        const auto range = rangeOf(text.substr(0, comma));
        if (!range) return std::nullopt;
        ranges.push_back(*range);
        if (comma == std::string_view::npos) return PageSelection(std::move(ranges));
        text.remove_prefix(comma + 1);
    }
}

} // namespace quillow
