#include "engines/pdf/layout/Paragraphs.h"

#include "engines/pdf/layout/Leadings.h"
#include "engines/pdf/layout/RowText.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

namespace quillow::pdf {

namespace {

/// Lines of a paragraph differ by less than this from the usual leading. In ems.
constexpr float kLeadingTolerance = 0.22F;
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
/// The blank before a further word, and what lines are wrapped too early. In ems.
constexpr float kBlank = 0.75F;
/// The width of letters as a rule. In ems.
constexpr float kLetter = 0.5F;
/// A line without room for a further word may all the same be wrapped if it fills so much of its column.
constexpr float kNearlyFull = 0.6F;

/// Whether the first word of a row had room at the end of the row above.
bool wordHasRoom(const Row& above, const Row& below) {
    const float size = std::max(1.0F, std::min(above.size, below.size));
    if (above.room <= kBlank * size) return false;
    const std::u32string_view text = below.begin;
    const float letter = !text.empty() && isIdeograph(text[0]) ? 1 : kLetter;
    const float width = static_cast<float>(lengthOfFirstWord(text)) * letter + kBlank;
    return above.room > width * size;
}

/// Marks the rows of one block: rows that follow one another without a wider space.
class BlockMarker {
public:
    BlockMarker(std::span<Row> rows, Side beginning, Evidence* evidence)
        : rows_(rows)
        , beginning_(beginning)
        , evidence_(evidence) {
        const auto full =
            std::count_if(rows.begin(), rows.end(), [](const Row& row) { return row.room < kSameMargin * row.size; });
        isJustified_ =
            rows.size() >= kLeastRows && static_cast<float>(full) >= kJustifiedShare * static_cast<float>(rows.size());
    }

    void mark() {
        beginAt(0);
        for (std::size_t i = 1; i < rows_.size(); ++i) {
            Row& row = rows_[i];
            if (isCode(i)) {
                row.beginsLine = true;
            } else if (beginsItem(i)) {
                items_.push_back(i);
                row.beginsLine = true;
                beginAt(i);
                continue;
            } else if (isBelowTerm(i)) {
                row.beginsLine = true;
                rest_ = start(i);
                continue;
            } else if (showsIndent(i) || isHeadingEnd(i) || isParagraphEnd(i)) {
                row.beginsParagraph = true;
                if (evidence_ != nullptr) note(i);
                beginAt(i);
                continue;
            } else {
                row.beginsLine = hasRoom(i) && !goesOn(i);
            }
            if (row.beginsLine) continue;
            rest_ = start(i);
            if (inItem_) itemsAreLong_ = true;
        }
        // The items of a list are paragraphs if one of them has several lines.
        if (itemsAreLong_)
            for (const std::size_t i : items_) {
                rows_[i].beginsParagraph = true;
                if (evidence_ != nullptr)
                    evidence_->note(Topic::paragraph, Verdict::accepted, rows_[i],
                                    "list: an item of it has several lines");
            }
    }

private:
    /// Says which rule begins a paragraph, the first one that does.
    void note(std::size_t i) const {
        const Row& row = rows_[i];
        const Row& above = rows_[i - 1];
        if (showsIndent(i))
            evidence_->note(Topic::paragraph, Verdict::accepted, row,
                            "indent: it begins elsewhere than the lines above",
                            {{"from the paragraph's first line", start(i) - start(first_)},
                             {"from its other lines", rest_ ? start(i) - *rest_ : 0},
                             {"kLeastIndent", kLeastIndent * size(first_)},
                             {"room above", above.room}});
        else if (isHeadingEnd(i))
            evidence_->note(Topic::paragraph, Verdict::accepted, row, "heading: another font or size above it or below",
                            {{"size", row.size}, {"size above", above.size}, {"room above", above.room}});
        else
            evidence_->note(Topic::paragraph, Verdict::accepted, row,
                            endsSentence(above.end) ? "short line above, which ends a sentence" : "short line above",
                            {{"room above", above.room},
                             {"kShortLine", kShortLine * size(i)},
                             {"justified", isJustified_ ? 1.0F : 0.0F}});
    }

    [[nodiscard]] float start(std::size_t i) const { return startOf(rows_[i], beginning_); }
    [[nodiscard]] float size(std::size_t i) const { return std::max(rows_[i].size, 1.0F); }

    void beginAt(std::size_t i) {
        first_ = i;
        rest_.reset();
        inItem_ = listSignOf(rows_[i].begin) != ListSign::none;
    }

    [[nodiscard]] bool isCode(std::size_t i) const { return rows_[i].isMonospaced && rows_[i - 1].isMonospaced; }

    [[nodiscard]] bool hasRoom(std::size_t i) const { return wordHasRoom(rows_[i - 1], rows_[i]); }

    /// Whether the text shows that a sentence goes on, though the line above has room.
    [[nodiscard]] bool goesOn(std::size_t i) const {
        const Row& above = rows_[i - 1];
        return !rows_[i].begin.empty() && isSmallLetter(rows_[i].begin[0]) && !endsSentence(above.end) &&
               above.font == rows_[i].font && above.width() > kNearlyFull * (above.width() + above.room);
    }

    [[nodiscard]] bool beginsItem(std::size_t i) const {
        const ListSign sign = listSignOf(rows_[i].begin);
        if (sign == ListSign::none) return false;
        const bool isAtStart = start(i) <= start(first_) + kSameMargin * size(i);
        if (inItem_) return isAtStart || hasRoom(i) || listSignOf(rows_[first_].begin) == sign;
        return hasRoom(i) || (sign == ListSign::bullet && endsSentence(rows_[i - 1].end));
    }

    /// Whether the row above is a heading or a term, and this one is the first of the lines that belong to it: they are
    /// indented, and the page shows no more space between them than between lines.
    [[nodiscard]] bool isBelowTerm(std::size_t i) const {
        return !rest_ && !inItem_ && start(i) > start(first_) + kLeastIndent * size(first_) && hasRoom(i) &&
               !endsSentence(rows_[i - 1].end);
    }

    [[nodiscard]] bool showsIndent(std::size_t i) const {
        const float least = kLeastIndent * size(first_);
        const float same = kSameMargin * size(first_);
        const float first = start(first_);
        const float here = start(i);
        if (!rest_) { // the paragraph has one line so far
            if (here < first - least) return hasRoom(i);
            if (here <= first + least || inItem_) return false;
            if (hasRoom(i)) return true;
            const bool returns = i + 1 < rows_.size() && std::abs(start(i + 1) - first) < same;
            return returns && here < first + kMostIndent * size(i);
        }
        const bool hangs = *rest_ > first + least;
        if (here > *rest_ + least) return hangs || here > *rest_ + kMostIndent * size(i) ? hasRoom(i) : true;
        if (here < *rest_ - least) return !hangs || here < first + same || hasRoom(i);
        return false;
    }

    /// Whether the row above is a heading over running text, or this row is one below it.
    [[nodiscard]] bool isHeadingEnd(std::size_t i) const {
        const Row& above = rows_[i - 1];
        const Row& below = rows_[i];
        if (above.font == below.font && haveOneSize(above, below)) return false;
        if (start(i) > start(i - 1) + kLeastIndent * size(i)) return false; // the lines below it are indented
        if (!hasRoom(i) || (!above.isOneFont && !below.isOneFont)) return false;
        const bool belowRuns = i + 1 < rows_.size() && !hasRoom(i + 1);
        const bool aboveRuns = i >= 2 && !hasRoom(i - 1);
        return (above.isOneFont && belowRuns) || (below.isOneFont && aboveRuns);
    }

    [[nodiscard]] bool isParagraphEnd(std::size_t i) const {
        const bool isShort = isJustified_ && rows_[i - 1].room > kShortLine * size(i);
        const bool isBetweenSentences = endsSentence(rows_[i - 1].end) && beginsSentence(rows_[i].begin);
        return hasRoom(i) ? isShort || isBetweenSentences : isShort && isBetweenSentences;
    }

    std::span<Row> rows_;
    Side beginning_;
    Evidence* evidence_;
    bool isJustified_ = false;
    std::size_t first_ = 0;     ///< where the paragraph begins
    std::optional<float> rest_; ///< where its lines but the first begin
    bool inItem_ = false;       ///< the paragraph is an item of a list
    bool itemsAreLong_ = false;
    std::vector<std::size_t> items_;
};

/// Rows of running text are one paragraph whatever their leading is if the next one is as far away.
class SpacingMarker {
public:
    SpacingMarker(std::span<Row> rows, Evidence* evidence)
        : rows_(rows)
        , evidence_(evidence)
        , leadings_(rows) {}

    void mark() {
        for (std::size_t i = 1; i < rows_.size(); ++i) {
            // To another column, or back: a paragraph may go on there.
            if (!(rows_[i].baseline < rows_[i - 1].baseline)) continue;
            const float expected = leadings_.usual(rows_[i].size) + kLeadingTolerance;
            if (!(leading(i) > expected) || isEvenlySpaced(i)) continue;
            rows_[i].beginsParagraph = true;
            if (evidence_ != nullptr)
                evidence_->note(Topic::paragraph, Verdict::accepted, rows_[i], "spacing: the row above is far",
                                {{"leading", leading(i)},
                                 {"usual", expected - kLeadingTolerance},
                                 {"kLeadingTolerance", kLeadingTolerance}});
        }
    }

private:
    [[nodiscard]] float leading(std::size_t i) const { return leadingBetween(rows_[i - 1], rows_[i]); }

    /// Whether a row is a wrapped line below the one above it.
    [[nodiscard]] bool isWrapped(std::size_t i) const {
        return i > 0 && i < rows_.size() && follows(rows_[i - 1], rows_[i]) && haveOneSize(rows_[i - 1], rows_[i]) &&
               !rows_[i].isTableRow && !wordHasRoom(rows_[i - 1], rows_[i]) &&
               !(endsSentence(rows_[i - 1].end) && beginsSentence(rows_[i].begin));
    }

    [[nodiscard]] bool isEvenlySpaced(std::size_t i) const {
        if (!isWrapped(i)) return false;
        const auto isAsFar = [&](std::size_t other) {
            return isWrapped(other) && std::abs(leading(other) - leading(i)) < kLeadingTolerance / 2;
        };
        return isAsFar(i - 1) || isAsFar(i + 1);
    }

    std::span<Row> rows_;
    Evidence* evidence_;
    Leadings leadings_;
};

} // namespace

void markParagraphs(std::span<Row> rows, Side beginning, Evidence* evidence) {
    measureMargins(rows, beginning);
    SpacingMarker(rows, evidence).mark();
    std::size_t begin = 0;
    for (std::size_t i = 1; i <= rows.size(); ++i) {
        if (i < rows.size() && !rows[i].beginsParagraph && follows(rows[i - 1], rows[i]) && !rows[i].isTableRow &&
            !rows[i - 1].isTableRow)
            continue;
        BlockMarker(rows.subspan(begin, i - begin), beginning, evidence).mark();
        begin = i;
    }
}

} // namespace quillow::pdf
