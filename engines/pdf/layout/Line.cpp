#include "engines/pdf/layout/Line.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

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
/// Letters more than so much larger than those beside them are drop caps or headings beside text; superscripts of
/// superscripts are half as large as the text.
constexpr float kMuchLarger = 2.1F;
/// Such lines are one only if their baselines or their tops differ by less, in ems of the smaller ones: two or three lines
/// are beside a drop cap, and it belongs to the first of them.
constexpr float kAligned = 0.4F;
/// A drop cap has at most so many glyphs: a quotation mark, a letter and a blank.
constexpr std::size_t kDropCap = 3;
/// Height of the bands in which earlier lines are looked for, in points.
constexpr float kBand = 8;

bool haveSameBaseline(const Line& line, const Span& span) {
    const float larger = std::max(line.size, span.size);
    const float smaller = std::min(line.size, span.size);
    if (smaller < kSameSize * larger) return true; // the overlap decides
    return std::abs(line.baseline - span.baseline) < kSameBaseline * larger;
}

bool areAligned(const Line& line, const Span& span) {
    const float most = kAligned * std::min(line.size, span.size);
    return std::abs(line.baseline - span.baseline) < most || std::abs(line.top - span.top) < most;
}

/// How far a span is from the line horizontally; negative if they overlap.
float gapBetween(const Line& line, const Span& span) {
    return std::max(span.left - line.right, line.left - span.right);
}

class LineBuilder {
public:
    explicit LineBuilder(const Orientation& orientation)
        : orientation_(orientation) {}

    std::vector<Line> build() && {
        for (std::uint32_t index = 0; index < orientation_.spans.size(); ++index)
            add(index);
        return std::move(lines_);
    }

private:
    void add(std::uint32_t index) {
        const Span& span = orientation_.spans[index];
        if (current_ < lines_.size() && belongsTo(lines_[current_], span, kWideGap)) return join(current_, index);
        if (const std::size_t earlier = earlierLine(span); earlier < lines_.size()) return join(earlier, index);
        current_ = lines_.size();
        lines_.emplace_back();
        Line& line = lines_.back();
        line.spans.push_back(index);
        line.left = span.left;
        line.right = span.right;
        line.baseline = span.baseline;
        line.bottom = span.bottom;
        line.top = span.top;
        line.size = span.size;
        bands_.emplace(bandOf(span.baseline), static_cast<std::uint32_t>(current_));
    }

    static bool belongsTo(const Line& line, const Span& span, float gap) {
        const float smaller = std::min(line.size, span.size);
        const float larger = std::max(line.size, span.size);
        if (verticalOverlap(line, span) < kSameLine || !haveSameBaseline(line, span)) return false;
        if (larger > kMuchLarger * smaller) return areAligned(line, span) && gapBetween(line, span) < gap * smaller;
        return gapBetween(line, span) < gap * larger;
    }

    /// A line that the span lies in or touches; the number of lines if there is none.
    [[nodiscard]] std::size_t earlierLine(const Span& span) const {
        const int band = bandOf(span.baseline);
        std::size_t best = lines_.size();
        float bestGap = 0;
        for (int near = band - 1; near <= band + 1; ++near) {
            const auto [begin, end] = bands_.equal_range(near);
            for (auto entry = begin; entry != end; ++entry) {
                const Line& line = lines_[entry->second];
                if (!belongsTo(line, span, kLateGap)) continue;
                const float gap = gapBetween(line, span);
                if (best != lines_.size() && gap >= bestGap) continue;
                best = entry->second;
                bestGap = gap;
            }
        }
        return best;
    }

    /// Whether all but the last span of a line is a drop cap.
    [[nodiscard]] bool isDropCap(const Line& line) const {
        return line.spans.size() == 2 && orientation_.spans[line.spans.front()].glyphCount <= kDropCap;
    }

    void join(std::size_t at, std::uint32_t index) {
        Line& line = lines_[at];
        const Span& span = orientation_.spans[index];
        line.spans.push_back(index);
        line.left = std::min(line.left, span.left);
        line.right = std::max(line.right, span.right);
        const bool followsDropCap = line.size > kMuchLarger * span.size && isDropCap(line) && span.left >= line.left;
        if (span.size > line.size || followsDropCap) {
            line.size = span.size;
            line.baseline = span.baseline;
            line.bottom = span.bottom;
            line.top = span.top;
        }
        current_ = at;
    }

    static int bandOf(float baseline) {
        constexpr float kFarthest = 1e6F;
        return static_cast<int>(std::floor(std::clamp(baseline, -kFarthest, kFarthest) / kBand));
    }

    const Orientation& orientation_;
    std::vector<Line> lines_;
    std::size_t current_ = 0;
    std::unordered_multimap<int, std::uint32_t> bands_;
};

} // namespace

std::vector<Line> linesOf(const Orientation& orientation) {
    return LineBuilder(orientation).build();
}

} // namespace quillow::pdf
