#include "engines/pdf/layout/Line.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <tuple>

namespace quillow::pdf {

namespace {

/// A span belongs to a line if so much of the lower one's height is common: superscripts and drop caps do, the line
/// below does not.
constexpr float kSameLine = 0.5F;
/// Spans of about one size have one baseline if they differ by less. In ems; superscripts are smaller.
constexpr float kSameBaseline = 0.35F;
constexpr float kSameSize = 0.8F;
/// A wider gap separates two lines side by side. In ems of the larger font.
constexpr float kWideGap = 1.2F;
/// A span that comes later, not behind its line, belongs to it only if it is as near as a word is. In ems.
constexpr float kLateGap = 0.5F;
/// Superscripts above subscripts, and limits of sums, are shorter. In ems of their own.
constexpr float kLongestScript = 3;
/// Letters more than so much larger than those beside them are drop caps or headings beside text; superscripts of
/// superscripts are half as large as the text.
constexpr float kMuchLarger = 2.1F;
/// Such letters are in one line only if their baselines or their tops differ by less, in ems of the smaller ones: two
/// or three lines are beside a drop cap, and it belongs to the first of them.
constexpr float kAligned = 0.4F;
/// A drop cap has at most so many glyphs: a quotation mark, a letter and a blank.
constexpr std::size_t kDropCap = 3;
/// A drop cap is at most so far from its word, in ems of the word.
constexpr float kDropCapGap = 0.4F;
/// Height of the bands in which earlier lines are looked for, in points.
constexpr float kBand = 8;

/// So many lines of a band are looked at, the latest ones: pages may have very many lines at one height.
constexpr std::size_t kMostLooked = 32;

template <class Item>
bool haveSameSize(const Line& line, const Item& item) {
    return std::min(line.size, item.size) >= kSameSize * std::max(line.size, item.size);
}

template <class Item>
bool haveSameBaseline(const Line& line, const Item& item) {
    if (!haveSameSize(line, item)) return true; // the overlap decides
    return std::abs(line.baseline - item.baseline) < kSameBaseline * std::max(line.size, item.size);
}

template <class Item>
bool areAligned(const Line& line, const Item& item) {
    const float most = kAligned * std::min(line.size, item.size);
    return std::abs(line.baseline - item.baseline) < most || std::abs(line.top - item.top) < most;
}

/// How far a span or line is from the line horizontally; negative if they overlap.
template <class Item>
float gapBetween(const Line& line, const Item& item) {
    return std::max(item.left - line.right, line.left - item.right);
}

template <class Item>
bool belongsTo(const Line& line, const Item& item, float gap) {
    if (verticalOverlap(line, item) < kSameLine || !haveSameBaseline(line, item)) return false;
    const float smaller = std::min(line.size, item.size);
    const float larger = std::max(line.size, item.size);
    if (larger > kMuchLarger * smaller) return areAligned(line, item) && gapBetween(line, item) < kDropCapGap * smaller;
    return gapBetween(line, item) < gap * larger;
}

/// Makes a line large enough for a span or another line.
template <class Item>
void extend(Line& line, const Item& item) {
    line.left = std::min(line.left, item.left);
    line.right = std::max(line.right, item.right);
    if (item.size <= line.size) return;
    line.size = item.size;
    line.baseline = item.baseline;
    line.bottom = item.bottom;
    line.top = item.top;
}

/// The lines of each band of heights, in the order in which they were added. A hash table with open addressing: pages
/// may be of any height.
class BandIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    /// Adds the line with the next number.
    void add(float baseline) {
        if (2 * used_ >= slots_.size()) grow();
        const int band = bandOf(baseline);
        Slot& slot = slots_[placeOf(band)];
        if (slot.latest == kNone) {
            slot.band = band;
            ++used_;
        }
        before_.push_back(slot.latest);
        slot.latest = static_cast<std::uint32_t>(before_.size() - 1);
    }

    [[nodiscard]] std::size_t size() const { return before_.size(); }

    static int bandOf(float baseline) {
        constexpr float kFarthest = 1e6F;
        return static_cast<int>(std::floor(std::clamp(baseline, -kFarthest, kFarthest) / kBand));
    }

    /// The latest lines of a band, the earliest of them first. Valid until the next call.
    [[nodiscard]] std::span<const std::uint32_t> latestOf(int band) {
        if (slots_.empty()) return {};
        std::size_t first = latest_.size();
        for (std::uint32_t line = slots_[placeOf(band)].latest; line != kNone && first > 0; line = before_[line])
            latest_[--first] = line;
        return std::span(latest_).subspan(first);
    }

private:
    struct Slot {
        int band = 0;
        std::uint32_t latest = kNone;
    };

    /// The slot of a band, or the free one where it would be.
    [[nodiscard]] std::size_t placeOf(int band) const {
        constexpr std::uint32_t kFactor = 0x9E3779B9; // spreads neighbours: 2 to the power of 32 by the golden ratio
        std::size_t place = (static_cast<std::uint32_t>(band) * kFactor) >> shift_;
        while (slots_[place].latest != kNone && slots_[place].band != band)
            place = (place + 1) % (std::size_t{1} << (kBits - shift_));
        return place;
    }

    void grow() {
        --shift_;
        std::vector<Slot> slots(std::size_t{1} << (kBits - shift_));
        slots.swap(slots_);
        for (const Slot& slot : slots)
            if (slot.latest != kNone) slots_[placeOf(slot.band)] = slot;
    }

    static constexpr std::uint32_t kBits = 32;
    std::uint32_t shift_ = 26;
    std::vector<Slot> slots_; ///< as many as there are numbers of 32 bits without the last `shift_`
    std::size_t used_ = 0;
    std::vector<std::uint32_t> before_; ///< for each line, the one before it in its band
    std::array<std::uint32_t, kMostLooked> latest_{};
};

class LineBuilder {
public:
    explicit LineBuilder(const Orientation& orientation)
        : orientation_(orientation) {}

    Lines build() && {
        const std::size_t most = orientation_.spans.size();
        lineOf_.reserve(most);
        lines_.reserve(most);
        growths_.reserve(most);
        for (const Span& span : orientation_.spans)
            lineOf_.push_back(add(span));
        if (!areBelowOneAnother()) mergeOverlapping();
        return collect();
    }

private:
    /// What is known of a line that is not complete.
    struct Growth {
        float firstBaseline = 0;    ///< of its first span
        std::uint32_t lastSpan = 0; ///< that joined it
        bool mayBeDropCap = false;  ///< it is a single span of few letters
    };

    /// Returns the line that the span joins.
    std::uint32_t add(const Span& span) {
        if (current_ < lines_.size() && belongsTo(lines_[current_], span, kWideGap) && !isBelowLast(current_, span))
            return join(span);
        current_ = earlierLine(span);
        if (current_ < lines_.size()) return join(span);
        growths_.push_back({span.baseline, indexOf(span), span.glyphCount <= kDropCap});
        Line& line = lines_.emplace_back();
        line.left = span.left;
        line.right = span.right;
        line.baseline = span.baseline;
        line.bottom = span.bottom;
        line.top = span.top;
        line.size = span.size;
        lowerLowest(line);
        return current_;
    }

    [[nodiscard]] std::uint32_t indexOf(const Span& span) const {
        return static_cast<std::uint32_t>(&span - orientation_.spans.data());
    }

    void lowerLowest(const Line& line) {
        if (!(line.bottom >= lowest_)) lowest_ = line.bottom;
    }

    /// Whether the span is another line of small text beside a drop cap or a large figure.
    [[nodiscard]] bool isBelowLast(std::uint32_t line, const Span& span) const {
        const Span& last = orientation_.spans[growths_[line].lastSpan];
        if (std::max(last.size, span.size) >= kSameSize * lines_[line].size) return false;
        const float common = std::min(last.right, span.right) - std::max(last.left, span.left);
        return common > kLongestScript * span.size &&
               std::abs(last.baseline - span.baseline) > kSameBaseline * span.size;
    }

    /// Adds the span to the current line.
    std::uint32_t join(const Span& span) {
        Line& line = lines_[current_];
        Growth& growth = growths_[current_];
        // The line of a drop cap has the place of the small letters beside it.
        if (growth.mayBeDropCap && line.size > kMuchLarger * span.size && span.left >= line.left) line.size = 0;
        growth.mayBeDropCap = false;
        extend(line, span);
        growth.lastSpan = indexOf(span);
        lowerLowest(line);
        return current_;
    }

    /// A line that the span lies in or touches; the number of lines if there is none.
    [[nodiscard]] std::uint32_t earlierLine(const Span& span) {
        auto best = static_cast<std::uint32_t>(lines_.size());
        if (span.top <= lowest_) return best; // below all of them, as most lines are
        while (bands_.size() < lines_.size())
            bands_.add(growths_[bands_.size()].firstBaseline);
        const int band = BandIndex::bandOf(span.baseline);
        float bestGap = 0;
        for (int near = band - 1; near <= band + 1; ++near) {
            for (const std::uint32_t entry : bands_.latestOf(near)) {
                const Line& line = lines_[entry];
                if (!belongsTo(line, span, kLateGap) || isBelowLast(entry, span)) continue;
                const float gap = gapBetween(line, span);
                if (best != lines_.size() && gap >= bestGap) continue;
                best = entry;
                bestGap = gap;
            }
        }
        return best;
    }

    /// Whether each line has a lower baseline than the line before it. Then none have grown together.
    [[nodiscard]] bool areBelowOneAnother() const {
        for (std::size_t i = 1; i < lines_.size(); ++i)
            if (!(lines_[i].baseline < lines_[i - 1].baseline)) return false;
        return true;
    }

    /// Joins lines that have grown together: some producers draw the blanks and commas of a line first.
    void mergeOverlapping() {
        std::vector<std::uint32_t> order(lines_.size());
        std::iota(order.begin(), order.end(), 0);
        std::vector<std::uint32_t> target = order; // the line that each line has been joined to
        std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
            const Line& x = lines_[a];
            const Line& y = lines_[b];
            return std::tuple(x.baseline, x.left, a) < std::tuple(y.baseline, y.left, b);
        });
        for (std::size_t i = 1; i < order.size(); ++i) {
            const std::uint32_t before = target[order[i - 1]];
            const Line& line = lines_[order[i]];
            if (lines_[before].baseline != line.baseline || !haveSameSize(lines_[before], line) ||
                !belongsTo(lines_[before], line, kLateGap))
                continue;
            const auto [first, second] = std::minmax(before, order[i]);
            extend(lines_[first], lines_[second]);
            target[before] = target[order[i - 1]] = target[order[i]] = first;
        }
        for (std::uint32_t& line : target)
            line = target[line]; // a line is joined to an earlier one
        for (std::uint32_t& line : lineOf_)
            line = target[line];
    }

    /// Lists the spans of each line.
    Lines collect() {
        for (const std::uint32_t line : lineOf_)
            ++lines_[line].spanCount;
        Lines found;
        std::uint32_t first = 0;
        for (Line& line : lines_) {
            line.firstSpan = first;
            first += line.spanCount;
            line.spanCount = 0;
        }
        found.spans.resize(first);
        for (std::uint32_t span = 0; span < lineOf_.size(); ++span) {
            Line& line = lines_[lineOf_[span]];
            found.spans[line.firstSpan + line.spanCount++] = span;
        }
        std::erase_if(lines_, [](const Line& line) { return line.spanCount == 0; });
        found.lines = std::move(lines_);
        return found;
    }

    const Orientation& orientation_;
    std::vector<Line> lines_;
    std::vector<Growth> growths_;       ///< of each line
    std::vector<std::uint32_t> lineOf_; ///< of each span
    std::uint32_t current_ = 0;
    float lowest_ = std::numeric_limits<float>::max(); ///< no line is below this height
    BandIndex bands_;                                  ///< the lines, up to the last one that was looked for
};

} // namespace

Lines linesOf(const Orientation& orientation) {
    return LineBuilder(orientation).build();
}

} // namespace quillow::pdf
