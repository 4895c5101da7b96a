#include "engines/pdf/layout/MarginNotes.h"

#include "engines/pdf/layout/Line.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillow::pdf {

namespace {

/// Lines of running text are at least so wide, in ems; rows of tables and labels with values seldom begin so.
constexpr float kLeastProse = 9.0F;
/// A note is narrower than the text beside it, by this factor at most.
constexpr float kMostWidth = 0.6F;
/// A note is not in larger letters than the text.
constexpr float kMostSize = 1.05F;
/// A note of one line is in smaller letters, or it is in a row with the line beside it; and it is longer than the
/// number of a line, in ems.
constexpr float kSmaller = 0.95F;
constexpr float kLongestNumber = 2.5F;
/// A note is at least so far from the text. In points.
constexpr float kLeastGutter = 5.0F;
/// Lines of a text are at most so far apart, in ems, between the letters.
constexpr float kMostLeading = 1.2F;
/// Lines of a text begin at one place but for an indent. In ems.
constexpr float kMostIndent = 2.0F;
/// A smaller indent, and a smaller difference of distances between lines, is none. In ems.
constexpr float kSame = 0.3F;
/// Columns of one text are about equally wide.
constexpr float kSameWidth = 0.8F;
/// Sizes of letters in one text differ by less.
constexpr float kSameSize = 0.9F;
/// Only the last line of a paragraph fills less of its width.
constexpr float kFilled = 0.8F;
/// Lines of a note, and of the text that it interrupts, that are looked at. More are not on a page.
constexpr std::size_t kMostNote = 40;
constexpr std::size_t kMostText = 200;

float widthOf(const Item& item) {
    return item.right - item.left;
}

class MarginNotes {
public:
    MarginNotes(std::span<const Item> items, std::vector<std::uint32_t>& order)
        : items_(items)
        , order_(order) {}

    void place() {
        for (std::size_t at = 1; at < order_.size(); ++at) {
            const std::size_t end = endOfNote(at);
            if (end == at || end == order_.size() || !isNote(at, end) || !goesOn(at - 1, end)) continue;
            const std::size_t behind = endOfText(at, end);
            const auto begin = order_.begin();
            std::rotate(begin + static_cast<std::ptrdiff_t>(at), begin + static_cast<std::ptrdiff_t>(end),
                        begin + static_cast<std::ptrdiff_t>(behind));
        }
    }

private:
    [[nodiscard]] const Item& item(std::size_t at) const { return items_[order_[at]]; }

    /// Whether an item is beside the text that `text` is a line of: -1 to the left, 1 to the right, 0 neither.
    [[nodiscard]] static int sideOf(const Item& item, const Item& text) {
        if (item.right < text.left - kLeastGutter) return -1;
        return item.left > text.right + kLeastGutter ? 1 : 0;
    }

    /// The end of the items from `at` on that are beside the line before them, one below the other.
    [[nodiscard]] std::size_t endOfNote(std::size_t at) const {
        const Item& line = item(at - 1);
        const int side = sideOf(item(at), line);
        if (side == 0) return at;
        const auto isNext = [](const Item& above, const Item& below) {
            const float distance = above.bottom - below.top;
            return distance > -kSame * below.size && distance < kMostLeading * below.size && above.left < below.right &&
                   below.left < above.right;
        };
        std::size_t end = at + 1;
        while (end < order_.size() && end - at < kMostNote && sideOf(item(end), line) == side &&
               isNext(item(end - 1), item(end)))
            ++end;
        return end;
    }

    [[nodiscard]] bool isNote(std::size_t at, std::size_t end) const {
        const Item& text = item(at - 1);
        if (widthOf(text) < kLeastProse * text.size) return false;
        for (std::size_t i = at; i < end; ++i)
            if (widthOf(item(i)) > kMostWidth * widthOf(text) || item(i).size > kMostSize * text.size) return false;
        if (item(at).top < text.bottom || item(end - 1).bottom > text.top) return false;
        const Item& first = item(at);
        return end - at > 1 || (first.size < kSmaller * text.size && widthOf(first) > kLongestNumber * first.size);
    }

    /// Whether the text of a line goes on in another one, in the same column or in the next one.
    [[nodiscard]] bool goesOn(std::size_t before, std::size_t after) const {
        const Item& a = item(before);
        const Item& b = item(after);
        const float size = std::max(a.size, b.size);
        if (std::min(a.size, b.size) < kSameSize * size) return false;
        const float distance = a.bottom - b.top;
        if (distance > -kSame * size && distance < kMostLeading * size)
            return std::abs(a.left - b.left) < kMostIndent * size;
        const bool isNextColumn = b.left > a.right && b.bottom > a.top;
        return isNextColumn && std::min(widthOf(a), widthOf(b)) > kSameWidth * std::max(widthOf(a), widthOf(b));
    }

    /// The end of the text from `end` on that is beside the note, and of the paragraph there.
    [[nodiscard]] std::size_t endOfText(std::size_t at, std::size_t end) const {
        const int side = sideOf(item(at), item(at - 1));
        const float top = item(at).top;
        const float bottom = item(end - 1).bottom;
        std::size_t behind = end + 1;
        const std::size_t last = std::min(order_.size(), end + kMostText);
        for (std::size_t i = end; i < last && (i == end || goesOn(i - 1, i)); ++i) {
            if (sideOf(item(at), item(i)) != side) break;
            if (item(i).bottom < top && item(i).top > bottom) behind = i + 1;
        }
        float width = widthOf(item(at - 1));
        for (std::size_t i = end; i < behind; ++i)
            width = std::max(width, widthOf(item(i)));
        while (behind < last && goesOn(behind - 1, behind) && isSameParagraph(behind, width))
            ++behind;
        return behind;
    }

    [[nodiscard]] bool isSameParagraph(std::size_t at, float width) const {
        const Item& before = item(at - 1);
        const Item& line = item(at);
        const bool isIndented = line.left > before.left + kSame * line.size && line.left < before.right;
        return !isIndented && widthOf(before) > kFilled * width;
    }

    std::span<const Item> items_;
    std::vector<std::uint32_t>& order_;
};

} // namespace

void placeMarginNotes(std::span<const Item> items, std::vector<std::uint32_t>& order) {
    MarginNotes(items, order).place();
}

} // namespace quillow::pdf
