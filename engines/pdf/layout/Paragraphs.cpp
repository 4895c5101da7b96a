#include "engines/pdf/layout/Paragraphs.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <unordered_map>
#include <vector>

namespace quillow::pdf {

namespace {

/// Lines of a paragraph differ by less than this from the usual leading. In ems.
constexpr float kLeadingTolerance = 0.22F;
/// The leading of a page that shows none: a line below another one by 1.35 em.
constexpr float kUsualLeading = 0.45F;
/// Rows further apart are never one paragraph. In ems.
constexpr float kMostLeading = 2.5F;
/// An indent is wider than this and narrower than that. In ems.
constexpr float kLeastIndent = 0.7F;
constexpr float kMostIndent = 6.0F;
/// Rows with nearly the same margin. In ems.
constexpr float kSameMargin = 0.35F;
/// The last line of a paragraph ends so far before the right margin of a justified block. In ems.
constexpr float kShortLine = 2.0F;
/// So many rows of a justified block reach its right margin.
constexpr float kJustifiedShare = 0.6F;
constexpr std::size_t kLeastRows = 4;
/// Rows that are looked at for the usual leadings of a page, the same ones counted for each size: enough for 2,000 rows
/// of as many sizes. Recognised text has a size of its own in each line; newspapers have some hundred lines.
constexpr std::size_t kMostLooked = 4'000'000;

/// The free space between two rows, in ems of the smaller one.
float leadingBetween(const Row& above, const Row& below) {
    const float size = std::min(above.size, below.size);
    return size > 0 ? (above.bottom - below.top) / size : 0;
}

bool overlapHorizontally(const Row& a, const Row& b) {
    return a.left < b.right && b.left < a.right;
}

/// Whether a row goes on below the other one in the same column.
bool follows(const Row& above, const Row& below) {
    return below.baseline < above.baseline && overlapHorizontally(above, below) &&
           leadingBetween(above, below) < kMostLeading;
}

bool haveOneSize(const Row& a, const Row& b) {
    constexpr float kSame = 0.08F;
    return std::abs(a.size - b.size) < kSame * std::max(a.size, b.size);
}

class ParagraphMarker {
public:
    explicit ParagraphMarker(std::span<Row> rows)
        : rows_(rows) {}

    void mark() {
        markSpacing();
        std::size_t begin = 0;
        for (std::size_t i = 1; i <= rows_.size(); ++i) {
            if (i < rows_.size() && !rows_[i].beginsParagraph && follows(rows_[i - 1], rows_[i])) continue;
            markBlock(rows_.subspan(begin, i - begin));
            begin = i;
        }
    }

private:
    /// The most frequent leading between rows of that size; negative if there are too few, or too many rows were looked
    /// at.
    [[nodiscard]] float usualLeading(float size) {
        const auto [place, isNew] = usual_.try_emplace(size, -1.0F);
        if (!isNew || looked_ > kMostLooked) return place->second;
        looked_ += rows_.size();
        return place->second = findUsualLeading(size);
    }

    [[nodiscard]] float findUsualLeading(float size) {
        leadings_.clear();
        for (std::size_t i = 1; i < rows_.size(); ++i) {
            const Row& above = rows_[i - 1];
            const Row& below = rows_[i];
            if (follows(above, below) && haveOneSize(above, below) && std::abs(below.size - size) < 0.08F * size)
                leadings_.push_back(leadingBetween(above, below));
        }
        if (leadings_.size() < 3) return -1;
        // The smallest leading that is frequent: paragraphs of one line have none but the wider one between them.
        std::sort(leadings_.begin(), leadings_.end());
        std::size_t best = 0;
        std::size_t bestCount = 0;
        std::size_t end = 0;
        for (std::size_t begin = 0; begin < leadings_.size(); ++begin) {
            while (end < leadings_.size() && leadings_[end] < leadings_[begin] + kLeadingTolerance / 2)
                ++end;
            if (end - begin > bestCount) {
                bestCount = end - begin;
                best = begin + bestCount / 2;
            }
        }
        return leadings_[best];
    }

    void markSpacing() {
        float size = -1;
        float usual = 0;
        float last = kUsualLeading;
        for (std::size_t i = 1; i < rows_.size(); ++i) {
            const Row& above = rows_[i - 1];
            Row& below = rows_[i];
            if (!(below.baseline < above.baseline)) continue; // another column, or back: a paragraph may go on there
            if (below.size != size) {
                size = below.size;
                usual = usualLeading(size);
            }
            const float expected = usual > -1 ? usual : last;
            if (usual > -1) last = usual;
            if (leadingBetween(above, below) > expected + kLeadingTolerance) below.beginsParagraph = true;
        }
    }

    static void markBlock(std::span<Row> block) {
        if (block.size() < 2) return;
        markIndents(block);
        if (block.size() >= kLeastRows) markShortLines(block);
    }

    /// The left margin that most rows have.
    static float usualLeft(std::span<const Row> block, float tolerance) {
        float best = block.front().left;
        std::size_t bestCount = 0;
        const std::size_t step = 1 + block.size() / 64;
        for (std::size_t i = 0; i < block.size(); i += step) {
            std::size_t count = 0;
            for (const Row& row : block)
                count += std::abs(row.left - block[i].left) < tolerance ? 1 : 0;
            if (count > bestCount || (count == bestCount && block[i].left < best)) {
                bestCount = count;
                best = block[i].left;
            }
        }
        return best;
    }

    static void markIndents(std::span<Row> block) {
        const float size = block.front().size;
        const float margin = usualLeft(block, kSameMargin * size);
        for (std::size_t i = 1; i < block.size(); ++i) {
            const float indent = block[i].left - margin;
            const float indentBefore = block[i - 1].left - margin;
            const bool isIndented = indent > kLeastIndent * size && indent < kMostIndent * size;
            const bool isOutdented = indent < -kLeastIndent * size;
            if (isOutdented) block[i].beginsParagraph = true;
            if (!isIndented) continue;
            const bool goesBack = i + 1 == block.size() || block[i + 1].left < block[i].left - kLeastIndent * size;
            const bool beforeAtMargin = indentBefore < kLeastIndent * size;
            const bool goesOnAtIndent = !goesBack && std::abs(block[i + 1].left - block[i].left) < kSameMargin * size;
            // Lines that are indented below the first line of a paragraph go on in it: a hanging indent, a drop cap.
            const bool hangs = i == 1 || block[i - 1].beginsParagraph;
            if (goesBack || (beforeAtMargin && goesOnAtIndent && !hangs)) block[i].beginsParagraph = true;
        }
    }

    static void markShortLines(std::span<Row> block) {
        float right = block.front().right;
        for (const Row& row : block)
            right = std::max(right, row.right);
        const float size = block.front().size;
        const auto full = std::count_if(block.begin(), block.end(),
                                        [&](const Row& row) { return row.right > right - kSameMargin * size; });
        if (static_cast<float>(full) < kJustifiedShare * static_cast<float>(block.size())) return;
        for (std::size_t i = 1; i < block.size(); ++i)
            if (block[i - 1].right < right - kShortLine * size) block[i].beginsParagraph = true;
    }

    std::span<Row> rows_;
    std::vector<float> leadings_;
    std::unordered_map<float, float> usual_; ///< leadings of sizes
    std::size_t looked_ = 0;                 ///< rows
};

} // namespace

void markParagraphs(std::span<Row> rows) {
    ParagraphMarker(rows).mark();
}

} // namespace quillow::pdf
