#include "engines/pdf/layout/MixedLine.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>

namespace quillow::pdf {

namespace {

/// A mark is over a letter if its middle is so near it. In ems.
constexpr float kNearMark = 0.15F;

/// The index of a cluster that is a blank between two letters; the others are letters.
constexpr std::uint32_t kGap = 0xFFFFFFFF;

} // namespace

void MixedLine::attachMarks(std::span<Letter> letters) {
    constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
    constexpr std::size_t kMostMarks = std::numeric_limits<decltype(Letter::rank)>::max(); // of one letter
    const auto isMark = [this](const Letter& letter) {
        return directionOf(page_.text[letter.textBegin]) == Direction::mark;
    };
    std::size_t previous = kNone;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        if (!isMark(letters[i])) {
            previous = i;
            continue;
        }
        std::size_t end = i + 1;
        while (end < letters.size() && end - i < kMostMarks && isMark(letters[end]))
            ++end;
        for (std::size_t k = i; k < end; ++k) {
            Letter& mark = letters[k];
            const float near = kNearMark * mark.size;
            const auto isOver = [&mark, near](const Letter& letter) {
                return !letter.isBlank && mark.middle() > letter.left - near && mark.middle() < letter.right + near;
            };
            const bool overPrevious = previous != kNone && isOver(letters[previous]);
            const bool overNext = end < letters.size() && isOver(letters[end]);
            if (overNext != overPrevious) (overNext ? marksBefore_ : marksBehind_) += 1;
            if (overNext && (!overPrevious || marksBefore_ >= marksBehind_)) {
                mark.place = letters[end].left;
                mark.rank = static_cast<std::uint8_t>(end - k);
            } else if (overPrevious) {
                mark.place = letters[previous].left;
                mark.rank = static_cast<std::uint8_t>(k - i + 1);
            }
        }
        i = end - 1;
    }
}

void MixedLine::write(std::span<const Letter> letters, float threshold, std::u32string& out) {
    clusters_.clear();
    const Letter* before = nullptr;
    bool blank = false;
    for (std::uint32_t i = 0; i < letters.size(); ++i) {
        const Letter& letter = letters[i];
        if (letter.isBlank) {
            blank = true;
            continue;
        }
        const bool isSingle = letter.textEnd - letter.textBegin == 1;
        Direction direction = Direction::neutral;
        for (std::uint32_t k = letter.textBegin; k < letter.textEnd && direction == Direction::neutral; ++k)
            direction = directionOf(page_.text[k]);
        if (before != nullptr && direction != Direction::mark) {
            const bool drawn = blank && letter.left - before->right > kLeastBlank * letter.size;
            if (drawn || isBlankBetween(page_, *before, letter, threshold))
                clusters_.push_back({kGap, Direction::neutral, true});
        }
        clusters_.push_back({i, direction, false, isSingle ? page_.text[letter.textBegin] : 0});
        if (direction != Direction::mark) before = &letter;
        blank = false;
    }
    joinSignsToNumbers(letters);
    const bool fromTheRight = readsFromTheRight(clusters_, isPageFromTheRight_);
    settlePunctuation(clusters_, fromTheRight);
    reorder(clusters_, fromTheRight);
    // Marks were reversed to before their letters.
    for (std::size_t i = 0; i < clusters_.size(); ++i) {
        std::size_t end = i;
        while (end < clusters_.size() && clusters_[end].direction == Direction::mark)
            ++end;
        if (end > i && end < clusters_.size() && clusters_[end].direction == Direction::right) {
            std::reverse(clusters_.begin() + static_cast<std::ptrdiff_t>(i),
                         clusters_.begin() + static_cast<std::ptrdiff_t>(end + 1));
            i = end;
        }
    }
    countBrackets(letters);
    for (const Cluster& cluster : clusters_) {
        if (cluster.index == kGap) {
            out.push_back(U' ');
            continue;
        }
        const Letter& letter = letters[cluster.index];
        const char32_t other =
            cluster.isTurned && letter.textEnd - letter.textBegin == 1 && seenBrackets_ >= logicalBrackets_
                ? mirrored(page_.text[letter.textBegin])
                : 0;
        if (other != 0)
            out.push_back(other);
        else
            appendLetter(page_, letter, out);
    }
}

/// Percent signs and currencies go with the number beside them, but not in Arabic, where digits are of another class
/// (UAX #9, W2).
void MixedLine::joinSignsToNumbers(std::span<const Letter> letters) {
    for (const Cluster& cluster : clusters_)
        if (cluster.index != kGap && isIn(page_.text[letters[cluster.index].textBegin], 0x0600, 0x07BF)) return;
    for (std::size_t i = 0; i < clusters_.size(); ++i) {
        if (clusters_[i].index == kGap || !endsNumbers(page_.text[letters[clusters_[i].index].textBegin])) continue;
        const bool behind = i > 0 && clusters_[i - 1].direction == Direction::number;
        const bool before = i + 1 < clusters_.size() && clusters_[i + 1].direction == Direction::number;
        if (behind || before) clusters_[i].direction = Direction::number;
    }
}

/// Some producers say what brackets look like, others what they are. Pairs on the page tell them apart: in logical
/// order an opening bracket comes first.
void MixedLine::countBrackets(std::span<const Letter> letters) {
    char32_t open = 0; // the bracket that a pair began with
    for (const Cluster& cluster : clusters_) {
        if (!cluster.isTurned || cluster.index == kGap) continue;
        const char32_t c = page_.text[letters[cluster.index].textBegin];
        if (c != U'(' && c != U')' && c != U'[' && c != U']') continue;
        if (open != 0 && c == mirrored(open)) {
            (open == U'(' || open == U'[' ? logicalBrackets_ : seenBrackets_) += 1;
            open = 0;
        } else {
            open = c;
        }
    }
}

} // namespace quillow::pdf
