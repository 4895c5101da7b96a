#include "engines/pdf/layout/LineEvidence.h"

#include "engines/pdf/layout/Bidi.h"

#include <algorithm>
#include <string>

namespace quillow::pdf {

namespace {

/// Gaps below this are not worth a mark. In ems.
constexpr float kNoGap = 0.05F;

/// Decides about each gap once more, as the writers of lines do.
class LineEvidence {
public:
    LineEvidence(const Page& page, const Box& area, float threshold, Evidence& evidence)
        : page_(page)
        , area_(area)
        , threshold_(threshold)
        , evidence_(evidence) {}

    void show(std::span<const Letter> letters) {
        const Letter* before = nullptr;
        bool isBehindBlank = false;
        for (const Letter& letter : letters) {
            if (letter.isBlank) {
                isBehindBlank = true;
                continue;
            }
            if (before != nullptr && isGap(*before, letter, isBehindBlank)) endWord();
            add(letter);
            if (letter.right > letter.left || before == nullptr) before = &letter; // not a mark
            isBehindBlank = false;
        }
        endWord();
        evidence_.note(Topic::line, Verdict::accepted, area_, "wider gaps are blanks",
                       {{"threshold in em", threshold_}});
    }

private:
    /// Whether there is a blank between two letters. Notes what has not been drawn as one.
    bool isGap(const Letter& before, const Letter& after, bool isBehindBlank) {
        const float gap = after.left - before.right;
        if (isBehindBlank && gap > kLeastBlank * after.size) return true;
        const float size = std::max(before.size, after.size);
        const bool isWide = gap > threshold_ * size;
        const bool isBlank = isBlankBetween(page_, before, after, threshold_);
        if (isBlank)
            note(Verdict::accepted, before, after, isWide ? "a blank" : "a form field begins or ends");
        else if (gap > kNoGap * size)
            note(Verdict::refused, before, after, isWide ? "a script without blanks" : "no blank");
        return isBlank;
    }

    void note(Verdict verdict, const Letter& before, const Letter& after, std::string_view reason) {
        const auto [left, right] = std::minmax(before.right, after.left);
        const float size = std::max(before.size, after.size);
        evidence_.note(Topic::gap, verdict, Box{left, area_.bottom, right, area_.top}, reason,
                       {{"em", (after.left - before.right) / size}, {"threshold", threshold_}});
    }

    void add(const Letter& letter) {
        if (characters_.empty()) word_ = {letter.left, area_.bottom, letter.right, area_.top};
        word_.left = std::min(word_.left, letter.left);
        word_.right = std::max(word_.right, letter.right);
        characters_.append(page_.text, letter.textBegin, letter.textEnd - letter.textBegin);
        isFromTheRight_ = isFromTheRight_ || directionOf(page_.text[letter.textBegin]) == Direction::right;
    }

    void endWord() {
        if (isFromTheRight_) turn();
        if (!characters_.empty()) evidence_.show(Topic::word, word_, characters_);
        characters_.clear();
        isFromTheRight_ = false;
    }

    /// Puts letters that are seen from the left to the right into the order of a word that is read from the right.
    void turn() {
        const auto isFromTheLeft = [](char32_t c) {
            const Direction direction = directionOf(c);
            return direction == Direction::left || direction == Direction::number;
        };
        std::reverse(characters_.begin(), characters_.end());
        for (auto begin = characters_.begin(); begin != characters_.end();) {
            begin = std::find_if(begin, characters_.end(), isFromTheLeft);
            const auto end = std::find_if_not(begin, characters_.end(), isFromTheLeft);
            std::reverse(begin, end);
            begin = end;
        }
    }

    const Page& page_;
    const Box& area_;
    float threshold_;
    Evidence& evidence_;
    Box word_;
    std::u32string characters_;
    bool isFromTheRight_ = false;
};

} // namespace

void showLine(const Page& page, const Box& area, std::span<const Letter> letters, float threshold, Evidence& evidence) {
    LineEvidence(page, area, threshold, evidence).show(letters);
}

} // namespace quillow::pdf
