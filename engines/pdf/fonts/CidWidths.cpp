#include "engines/pdf/fonts/CidWidths.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

constexpr std::size_t kNumbersOfWidth = 1;
constexpr std::size_t kNumbersOfVertical = 3;
constexpr std::int64_t kLastCid = 0xFFFF;

} // namespace

CidWidths::CidWidths(Document& document, const Dictionary& descendant)
    : document_(document) {
    const Object widths = document.get(descendant, "W");
    const Object width = document.get(descendant, "DW");
    isDeclared_ = !widths.array().empty() || width.isNumber();
    defaultWidth_ = width.numberOr(defaultWidth_);
    widths_ = readSections(widths.array(), kNumbersOfWidth);
    const std::span<const Object> vertical = document.get(descendant, "DW2").array();
    if (vertical.size() >= 2) {
        defaultVertical_.y = numberOf(vertical[0], defaultVertical_.y);
        defaultVertical_.advance = numberOf(vertical[1], defaultVertical_.advance);
    }
    verticals_ = readSections(document.get(descendant, "W2").array(), kNumbersOfVertical);
}

double CidWidths::numberOf(const Object& object, double fallback) const {
    return document_.resolve(object).numberOr(fallback);
}

/// Either `first [numbers of first, of the next...]` or `first last numbers of all`. What is neither is skipped.
CidWidths::Sections CidWidths::readSections(std::span<const Object> items, std::size_t numbersOfCid) const {
    Sections sections;
    while (items.size() >= 2) {
        const Object first = document_.resolve(items[0]);
        const Object second = document_.resolve(items[1]);
        const std::span<const Object> list = second.array();
        std::size_t used = 1;
        if (first.isNumber() && first.integerOr(0) >= 0 && first.integerOr(0) <= kLastCid) {
            const auto cid = static_cast<std::uint32_t>(first.integerOr(0));
            if (second.type() == Object::Type::array) {
                const std::size_t count = std::min<std::size_t>(list.size() / numbersOfCid, kLastCid + 1);
                if (count > 0) sections.push_back({cid, cid + static_cast<std::uint32_t>(count) - 1, false, list});
                used = 2;
            } else if (second.isNumber() && items.size() >= 2 + numbersOfCid) {
                const auto last =
                    static_cast<std::uint32_t>(std::clamp<std::int64_t>(second.integerOr(0), 0, kLastCid));
                if (cid <= last) sections.push_back({cid, last, true, items.subspan(2, numbersOfCid)});
                used = 2 + numbersOfCid;
            }
        }
        items = items.subspan(used);
    }
    const auto byFirst = [](const Section& a, const Section& b) { return a.first < b.first; };
    if (!std::is_sorted(sections.begin(), sections.end(), byFirst))
        std::stable_sort(sections.begin(), sections.end(), byFirst);
    return sections;
}

std::span<const Object> CidWidths::find(const Sections& sections, std::uint32_t cid, std::size_t numbersOfCid) {
    const auto behind = std::upper_bound(sections.begin(), sections.end(), cid,
                                         [](std::uint32_t c, const Section& section) { return c < section.first; });
    if (behind == sections.begin()) return {};
    const Section& section = *std::prev(behind);
    if (cid > section.last) return {};
    return section.isShared ? section.numbers
                            : section.numbers.subspan((cid - section.first) * numbersOfCid, numbersOfCid);
}

double CidWidths::widthOf(std::uint32_t cid) const {
    const std::span<const Object> numbers = find(widths_, cid, kNumbersOfWidth);
    return numbers.empty() ? defaultWidth_ : numberOf(numbers[0], defaultWidth_);
}

VerticalMetrics CidWidths::verticalOf(std::uint32_t cid, double width) const {
    VerticalMetrics metrics = defaultVertical_;
    metrics.x = width / 2;
    const std::span<const Object> numbers = find(verticals_, cid, kNumbersOfVertical);
    if (numbers.empty()) return metrics;
    return {numberOf(numbers[0], metrics.advance), numberOf(numbers[1], metrics.x), numberOf(numbers[2], metrics.y)};
}

} // namespace quillow::pdf
