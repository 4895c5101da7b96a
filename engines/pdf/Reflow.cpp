#include "engines/pdf/Reflow.h"

#include "engines/pdf/LineEndHyphens.h"
#include "engines/pdf/RunningLines.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <string_view>

namespace quillow::pdf {

namespace {

/// Letters smaller than this share of the page's own are those of notes and captions.
constexpr float kSmallText = 0.93F;
/// Fonts that differ by less are of one size.
constexpr float kSameSize = 0.06F;
/// A line is full if it ends so near its margin. In ems.
constexpr float kFull = 2.5F;
/// So many lines at most may be between the parts of a paragraph.
constexpr std::size_t kMostBetween = 150;

enum class Relation { sameLine, newLine, newParagraph };

/// The rows of one text, joined.
class JoinedText {
public:
    void add(std::string_view text, const OutcomeRow& row, Relation relation) {
        if (!text_.empty()) {
            if (relation == Relation::sameLine)
                join(row);
            else
                text_.append(relation == Relation::newLine ? "\n" : "\n\n");
        }
        text_.append(text);
        last_ = row;
        ++rows_;
    }

    /// Appends what another text has, as paragraphs of their own, and empties it.
    void take(JoinedText& other) {
        if (other.text_.empty()) return;
        if (!text_.empty()) text_.append("\n\n");
        text_.append(other.text_);
        last_ = other.last_;
        other = {};
    }

    void append(std::string_view text) { text_.append(text); }
    void setLast(const OutcomeRow& row) { last_ = row; }
    [[nodiscard]] bool isEmpty() const { return text_.empty(); }
    [[nodiscard]] std::size_t rows() const { return rows_; }
    [[nodiscard]] const OutcomeRow& last() const { return last_; }
    [[nodiscard]] bool endsInHyphen() const { return !text_.empty() && text_.back() == '-'; }
    [[nodiscard]] std::string_view text() const { return text_; }

private:
    void join(const OutcomeRow& row) {
        if (endsInHyphen()) {
            if (last_.is(kSoftHyphen))
                text_.pop_back();
            else if (text_.size() > 1 && text_[text_.size() - 2] != ' ' && text_[text_.size() - 2] != '-')
                text_.push_back(kJoint);
            else
                text_.push_back(' ');
            return;
        }
        if (last_.is(kEndsSolid) && row.is(kBeginsSolid)) return;
        text_.push_back(' ');
    }

    std::string text_;
    OutcomeRow last_;
    std::size_t rows_ = 0;
};

class Reflower {
public:
    explicit Reflower(PageMarks marks)
        : marks_(marks) {}

    void addPage(const PageOutcome& page, const std::vector<std::uint32_t>& running) {
        if (marks_ == PageMarks::formFeed && !isFirstPage_) {
            text_.take(between_);
            text_.append("\f");
            isAfterMark_ = true;
        }
        isFirstPage_ = false;
        pageSize_ = sizeOf(page);
        bool isFirst = true;
        auto left = running.begin();
        for (std::uint32_t i = 0; i < page.rows.size(); ++i) {
            if (left != running.end() && *left == i) {
                ++left;
                isFirst = true;
                continue;
            }
            addRow(page.textOf(page.rows[i]), page.rows[i], isFirst);
            isFirst = false;
        }
    }

    [[nodiscard]] std::string finish() && {
        text_.take(between_);
        std::string text = withoutLineEndHyphens(text_.text());
        if (!text.empty()) text.push_back('\n');
        return text;
    }

private:
    /// The size of most letters of a page.
    static float sizeOf(const PageOutcome& page) {
        std::map<int, std::size_t> letters; // by tenths of a point
        for (const OutcomeRow& row : page.rows)
            letters[static_cast<int>(std::min(row.size, 1000.0F) * 10)] += row.end - row.begin;
        const auto most = std::max_element(letters.begin(), letters.end(),
                                           [](const auto& a, const auto& b) { return a.second < b.second; });
        return most == letters.end() ? 0 : static_cast<float>(most->first) / 10;
    }

    static bool isText(const OutcomeRow& row) { return !row.is(kTableRow) && !row.is(kMonospaced); }

    /// Whether a row may be the last of its column in the middle of a paragraph.
    [[nodiscard]] bool mayGoOn(const OutcomeRow& last) const {
        return isText(last) && last.is(kMainText) && !last.is(kEndsSentence);
    }

    /// Whether a paragraph goes on in a row that is not below its last line.
    [[nodiscard]] bool goesOn(const OutcomeRow& last, const OutcomeRow& row) const {
        if (!mayGoOn(last) || !isText(row) || !row.is(kMainText) || row.is(kListItem)) return false;
        if (std::abs(last.size - row.size) > kSameSize * std::max(last.size, row.size)) return false;
        if (row.is(kBeginsSmall)) return true;
        return last.room < kFull * last.size && !row.is(kFirstIndented) && !last.is(kBeginsParagraph);
    }

    /// The relation of two rows that follow one another on a page.
    static Relation relationOf(const OutcomeRow& last, const OutcomeRow& row) {
        if (row.is(kContinuesTable)) return Relation::newLine;
        if (row.is(kBeginsParagraph) || row.is(kTableRow) || last.is(kTableRow)) return Relation::newParagraph;
        return row.is(kBeginsLine) ? Relation::newLine : Relation::sameLine;
    }

    void addRow(std::string_view text, const OutcomeRow& row, bool isFirst) {
        if (isAfterMark_) {
            isAfterMark_ = false;
            text_.append(text);
            text_.setLast(row);
            return;
        }
        if (text_.isEmpty()) return text_.add(text, row, Relation::newParagraph);
        if (!isFirst && row.is(kBelow)) {
            // A block goes on, or another begins below it.
            JoinedText& current = isBetween_ ? between_ : text_;
            const Relation relation = relationOf(current.last(), row);
            if (relation != Relation::newParagraph) return current.add(text, row, relation);
        }
        if (mayGoOn(text_.last()) && isSmall(row) && !isSmall(text_.last()) && between_.rows() < kMostBetween) {
            isBetween_ = true;
            return between_.add(text, row, Relation::newParagraph);
        }
        const bool isSplit = isFirst || !row.is(kBelow) || isBetween_;
        isBetween_ = false;
        if (isSplit && goesOn(text_.last(), row)) return text_.add(text, row, Relation::sameLine);
        const bool isOneBlock = between_.isEmpty() && ((row.is(kListItem) && text_.last().is(kListItem)) ||
                                                       (row.is(kMonospaced) && text_.last().is(kMonospaced)) ||
                                                       (row.is(kTableRow) && text_.last().is(kTableRow)));
        text_.take(between_);
        text_.add(text, row, isSplit && isOneBlock ? Relation::newLine : Relation::newParagraph);
    }

    [[nodiscard]] bool isSmall(const OutcomeRow& row) const { return row.size < kSmallText * pageSize_; }

    PageMarks marks_;
    JoinedText text_;
    JoinedText between_; ///< notes and captions that cut the last paragraph of text_
    bool isBetween_ = false;
    bool isFirstPage_ = true;
    bool isAfterMark_ = false;
    float pageSize_ = 0;
};

} // namespace

std::string reflowed(std::span<const PageOutcome> pages, PageMarks marks) {
    const std::vector<std::vector<std::uint32_t>> running = runningLines(pages);
    Reflower reflower(marks);
    for (std::size_t i = 0; i < pages.size(); ++i)
        reflower.addPage(pages[i], running[i]);
    return std::move(reflower).finish();
}

} // namespace quillow::pdf
