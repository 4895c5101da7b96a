#include "engines/pdf/layout/LineText.h"

#include "engines/pdf/layout/Accents.h"
#include "engines/pdf/layout/PresentationForms.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillow::pdf {

namespace {

/// The same letter so near its twin is drawn twice to look bold, or as a shadow. In ems.
constexpr float kTwin = 0.12F;
/// A drawn blank between letters nearer than this is not seen. In ems.
constexpr float kLeastBlank = 0.04F;
/// Gaps below this are not blanks in any line. In ems.
constexpr float kNoBlank = 0.05F;
/// Letters overlap by kerning and by accents; by more, something is drawn twice or over something else. In ems.
constexpr float kOverlap = 0.2F;
/// Marks may begin so far to the right of the letter that the stream draws behind them. In ems.
constexpr float kBackStep = 0.2F;
/// A mark may be so far beside the letters of its cluster. In ems.
constexpr float kBesideCluster = 0.5F;
/// A mark is over a letter if its middle is so near it. In ems.
constexpr float kNearMark = 0.15F;
/// Kerning leaves gaps below this inside a cluster of glyphs. In ems.
constexpr float kKerned = 0.1F;
constexpr char32_t kFirstRightToLeft = 0x0590;
constexpr char32_t kFirstPresentationForm = 0xFB00;
constexpr char32_t kSoftHyphen = 0x00AD;
constexpr char32_t kNoBreakSpace = 0x00A0;

/// The index of a cluster that is a blank between two letters; the others are letters.
constexpr std::uint32_t kGap = 0xFFFFFFFF;

constexpr bool isBlankCharacter(char32_t c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == 0x3000 || (c >= 0x2000 && c <= 0x200B);
}

constexpr bool isIn(char32_t c, char32_t first, char32_t last) {
    return c >= first && c <= last;
}

/// Roughly the letters: what is neither punctuation, digit, nor symbol.
constexpr bool isAlphabetic(char32_t c) {
    if (c < 0x80) return isIn(c | 0x20U, 'a', 'z');
    return c >= 0xC0 && c != 0xD7 && c != 0xF7 && !isIn(c, 0x2000, 0x2BFF) && !isIn(c, 0x3000, 0x303F);
}

/// Scripts without blanks between words: gaps inside them are justification.
constexpr bool isSetSolid(char32_t c) {
    return isIn(c, 0x0E00, 0x0EFF) || isIn(c, 0x1000, 0x109F) || isIn(c, 0x1780, 0x17FF) || isIn(c, 0x3001, 0x30FF) ||
           isIn(c, 0x3400, 0x4DBF) || isIn(c, 0x4E00, 0x9FFF) || isIn(c, 0xF900, 0xFAFF) || isIn(c, 0xFF01, 0xFF60) ||
           isIn(c, 0x20000, 0x3FFFF);
}

bool mayBeRightToLeft(char32_t c) {
    return c >= kFirstRightToLeft && directionOf(c) == Direction::right;
}

/// No-break spaces around a line are not seen.
void trim(std::u32string& text, std::size_t begin) {
    while (text.size() > begin && text.back() == kNoBreakSpace)
        text.pop_back();
    const std::size_t first = std::min(text.find_first_not_of(kNoBreakSpace, begin), text.size());
    text.erase(begin, first - begin);
}

} // namespace

void LineWriter::extendOver(float left, float right, float size, Letter& letter) {
    const bool isMark = letter.right == letter.left; // the text of the cluster is with a glyph above its letter
    const float near = (isMark ? kBesideCluster : kKerned) * size;
    if (left - letter.right > near || letter.left - right > near) return;
    if (isMark) letter.left = letter.right = left;
    letter.left = std::min(letter.left, left);
    letter.right = std::max(letter.right, right);
}

void LineWriter::collectSpan(const Span& span) {
    const Page& page = page_;
    const auto glyphCount = static_cast<std::uint32_t>(page.glyphs.size());
    const bool isFromAnnotation = (page.runs[span.run].flags & kFromAnnotation) != 0;
    for (std::uint32_t i = span.firstGlyph; i < span.firstGlyph + span.glyphCount; ++i) {
        const Glyph& glyph = page.glyphs[i];
        const std::uint32_t textEnd =
            i + 1 < glyphCount ? page.glyphs[i + 1].text : static_cast<std::uint32_t>(page.text.size());
        float left = span.start + glyph.offset;
        float right = left + glyph.width;
        if (right < left) std::swap(left, right);
        if (textEnd == glyph.text) {
            // A further glyph of the characters before it: a cluster of an ActualText.
            if (!letters_.empty() && letters_.back().textEnd == glyph.text)
                extendOver(left, right, span.size, letters_.back());
            continue;
        }
        const bool isFirst = letters_.empty();
        Letter& letter = letters_.emplace_back();
        letter.left = left;
        letter.right = right;
        letter.place = left;
        letter.size = span.size;
        letter.isFromAnnotation = isFromAnnotation;
        letter.textBegin = glyph.text;
        letter.textEnd = textEnd;
        const char32_t first = page.text[glyph.text];
        letter.isBlank = textEnd - glyph.text == 1 && isBlankCharacter(first);
        if (mayBeRightToLeft(first)) hasRightToLeft_ = true;
        if (isFirst) continue;
        const Letter& before = (&letter)[-1];
        if (left < before.right - kOverlap * span.size) overlaps_ = true;
        if (left < before.left) inOrder_ = false;
        if (left < before.place && left > before.place - kBackStep * span.size) letter.place = before.place;
    }
}

void LineWriter::collect(std::span<const std::uint32_t> spans) {
    letters_.clear();
    hasRightToLeft_ = false;
    overlaps_ = false;
    inOrder_ = true;
    repeated_ = 0;
    for (const std::uint32_t span : spans)
        collectSpan(orientation_.spans[span]);
}

/// Of equal letters at one place the first stays.
void LineWriter::dropRepeated() {
    const auto textOf = [this](const Letter& letter) {
        return std::u32string_view(page_.text).substr(letter.textBegin, letter.textEnd - letter.textBegin);
    };
    std::size_t kept = 0;
    for (const Letter& letter : letters_) {
        bool isTwin = false;
        constexpr std::size_t kNeighbours = 4;
        for (std::size_t back = 1; back <= kNeighbours && back <= kept && !isTwin; ++back) {
            const Letter& before = letters_[kept - back];
            isTwin = std::abs(before.left - letter.left) < kTwin * letter.size &&
                     std::abs(before.right - letter.right) < kTwin * letter.size &&
                     letter.right - letter.left > kTwin * letter.size && textOf(before) == textOf(letter);
        }
        if (!isTwin) letters_[kept++] = letter;
    }
    repeated_ = letters_.size() - kept;
    letters_.resize(kept);
}

float LineWriter::thresholdOfLetters() {
    gaps_.clear();
    float drawnBlank = 0;
    float widest = 0;
    const Letter* before = nullptr;
    for (const Letter& letter : letters_) {
        if (letter.isBlank) {
            if (letter.right - letter.left > drawnBlank * letter.size)
                drawnBlank = (letter.right - letter.left) / letter.size;
        } else if (letter.right == letter.left) {
            continue; // a mark
        } else if (before != nullptr && !before->isBlank) {
            const float size = std::max(letter.size, before->size);
            const float width = (letter.left - before->right) / size;
            widest = std::max(widest, width);
            gaps_.push_back(
                {width, isAlphabetic(page_.text[before->textEnd - 1]) && isAlphabetic(page_.text[letter.textBegin])});
        }
        before = &letter;
    }
    // Most lines of documents that draw their blanks have no other gaps to judge.
    return widest < kNoBlank ? kNoBlank : blankThreshold(gaps_, drawnBlank);
}

bool LineWriter::isBlankBetween(const Letter& before, const Letter& after, float threshold) const {
    if (before.isFromAnnotation != after.isFromAnnotation) return true; // a field beside its label
    const float gap = after.left - before.right;
    const float size = std::max(before.size, after.size);
    if (gap <= threshold * size) return false;
    return !isSetSolid(page_.text[before.textEnd - 1]) || !isSetSolid(page_.text[after.textBegin]);
}

void LineWriter::appendLetter(const Letter& letter, std::u32string& out) const {
    for (std::uint32_t i = letter.textBegin; i < letter.textEnd; ++i) {
        const char32_t c = page_.text[i];
        if (c == kSoftHyphen) {
            if (letter.right > letter.left) out.push_back(U'-'); // what is drawn is a hyphen
            continue;
        }
        if (c < kFirstPresentationForm) {
            out.push_back(c);
            continue;
        }
        const std::u16string_view plain = plainLetters(c);
        if (plain.empty()) out.push_back(c);
        for (const char16_t unit : plain)
            out.push_back(unit);
    }
}

/// Of a letter and an accent over it, in whichever order they are drawn, writes the accented letter in place of the
/// first one, which has been written.
bool LineWriter::compose(const Letter& before, const Letter& letter, std::u32string& out) const {
    if (out.empty() || letter.textEnd - letter.textBegin != 1) return false;
    const bool accentIsFirst = isAccent(out.back());
    const Letter& accent = accentIsFirst ? before : letter;
    const Letter& base = accentIsFirst ? letter : before;
    if (accent.middle() < base.left || accent.middle() > base.right) return false;
    const char32_t c = page_.text[letter.textBegin];
    const char32_t whole = accentIsFirst ? composed(c, out.back()) : composed(out.back(), c);
    if (whole == 0) return false;
    out.back() = whole;
    return true;
}

void LineWriter::writeFromTheLeft(std::u32string& out) {
    const float threshold = thresholdOfLetters();
    const Letter* before = nullptr;
    bool blank = false;
    for (const Letter& letter : letters_) {
        if (letter.isBlank) {
            blank = true;
            continue;
        }
        if (before != nullptr) {
            if (letter.left < before->right - kKerned * letter.size && compose(*before, letter, out)) {
                if (letter.right > before->right) before = &letter;
                blank = false;
                continue;
            }
            const bool drawn = blank && letter.left - before->right > kLeastBlank * letter.size;
            if (drawn || isBlankBetween(*before, letter, threshold)) out.push_back(U' ');
        }
        const char32_t c = page_.text[letter.textBegin];
        if (letter.textEnd - letter.textBegin == 1 && c < kFirstPresentationForm && c != kSoftHyphen)
            out.push_back(c);
        else
            appendLetter(letter, out);
        if (letter.right > letter.left || before == nullptr) before = &letter; // not a mark
        blank = false;
    }
}

/// Gives marks the place of the letter that they belong to, so that they are behind it when letters are sorted. Text
/// that is shaped for the right and drawn from the left has a mark before its letter; other producers draw it
/// afterwards.
void LineWriter::attachMarks() {
    constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
    constexpr std::size_t kMostMarks = 8; // of one letter
    const auto isMark = [this](const Letter& letter) {
        return directionOf(page_.text[letter.textBegin]) == Direction::mark;
    };
    std::size_t previous = kNone;
    for (std::size_t i = 0; i < letters_.size(); ++i) {
        if (!isMark(letters_[i])) {
            previous = i;
            continue;
        }
        std::size_t end = i + 1;
        while (end < letters_.size() && end - i < kMostMarks && isMark(letters_[end]))
            ++end;
        for (std::size_t k = i; k < end; ++k) {
            Letter& mark = letters_[k];
            const float near = kNearMark * mark.size;
            const auto isOver = [&mark, near](const Letter& letter) {
                return !letter.isBlank && mark.middle() > letter.left - near && mark.middle() < letter.right + near;
            };
            const bool overPrevious = previous != kNone && isOver(letters_[previous]);
            const bool overNext = end < letters_.size() && isOver(letters_[end]);
            if (overNext != overPrevious) (overNext ? marksBefore_ : marksBehind_) += 1;
            if (overNext && (!overPrevious || marksBefore_ >= marksBehind_)) {
                mark.place = letters_[end].left;
                mark.rank = static_cast<std::uint8_t>(end - k);
            } else if (overPrevious) {
                mark.place = letters_[previous].left;
                mark.rank = static_cast<std::uint8_t>(k - i + 1);
            }
        }
        i = end - 1;
    }
}

void LineWriter::writeMixed(std::u32string& out) {
    const float threshold = thresholdOfLetters();
    clusters_.clear();
    const Letter* before = nullptr;
    bool blank = false;
    for (std::uint32_t i = 0; i < letters_.size(); ++i) {
        const Letter& letter = letters_[i];
        if (letter.isBlank) {
            blank = true;
            continue;
        }
        Direction direction = Direction::neutral;
        for (std::uint32_t k = letter.textBegin; k < letter.textEnd && direction == Direction::neutral; ++k)
            direction = directionOf(page_.text[k]);
        if (before != nullptr && direction != Direction::mark) {
            const bool drawn = blank && letter.left - before->right > kLeastBlank * letter.size;
            if (drawn || isBlankBetween(*before, letter, threshold))
                clusters_.push_back({kGap, Direction::neutral, true});
        }
        clusters_.push_back({i, direction, false});
        if (direction != Direction::mark) before = &letter;
        blank = false;
    }
    joinSignsToNumbers();
    reorder(clusters_, beginsWithItsEnd() || readsFromTheRight(clusters_, isPageFromTheRight()));
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
    countBrackets();
    for (const Cluster& cluster : clusters_) {
        if (cluster.index == kGap) {
            out.push_back(U' ');
            continue;
        }
        const Letter& letter = letters_[cluster.index];
        const char32_t other =
            cluster.isTurned && letter.textEnd - letter.textBegin == 1 && seenBrackets_ >= logicalBrackets_
                ? mirrored(page_.text[letter.textBegin])
                : 0;
        if (other != 0)
            out.push_back(other);
        else
            appendLetter(letter, out);
    }
}

/// Whether a line has the punctuation of its end before its first letter: it is read from the right, though it may have
/// no such letter.
bool LineWriter::beginsWithItsEnd() {
    const auto isPunctuation = [this](const Letter& letter) {
        return std::u32string_view(U".,:;!?").find(page_.text[letter.textBegin]) != std::u32string_view::npos;
    };
    const auto first =
        std::find_if(letters_.begin(), letters_.end(), [](const Letter& letter) { return !letter.isBlank; });
    if (first == letters_.end() || first + 1 == letters_.end() || !isPunctuation(*first)) return false;
    const char32_t next = page_.text[first[1].textBegin];
    return isAlphabetic(next) && !isPunctuation(letters_.back()) && isPageFromTheRight();
}

bool LineWriter::isPageFromTheRight() {
    if (!isPageFromTheRight_) isPageFromTheRight_ = isMostlyFromTheRight(page_.text);
    return *isPageFromTheRight_;
}

/// Percent signs and currencies go with the number beside them, but not in Arabic, where digits are of another class
/// (UAX #9, W2).
void LineWriter::joinSignsToNumbers() {
    for (const Cluster& cluster : clusters_)
        if (cluster.index != kGap && isIn(page_.text[letters_[cluster.index].textBegin], 0x0600, 0x07BF)) return;
    for (std::size_t i = 0; i < clusters_.size(); ++i) {
        if (clusters_[i].index == kGap || !endsNumbers(page_.text[letters_[clusters_[i].index].textBegin])) continue;
        const bool behind = i > 0 && clusters_[i - 1].direction == Direction::number;
        const bool before = i + 1 < clusters_.size() && clusters_[i + 1].direction == Direction::number;
        if (behind || before) clusters_[i].direction = Direction::number;
    }
}

/// Some producers say what brackets look like, others what they are. Pairs on the page tell them apart: in logical
/// order an opening bracket comes first.
void LineWriter::countBrackets() {
    char32_t open = 0; // the bracket that a pair began with
    for (const Cluster& cluster : clusters_) {
        if (!cluster.isTurned || cluster.index == kGap) continue;
        const char32_t c = page_.text[letters_[cluster.index].textBegin];
        if (c != U'(' && c != U')' && c != U'[' && c != U']') continue;
        if (open != 0 && c == mirrored(open)) {
            (open == U'(' || open == U'[' ? logicalBrackets_ : seenBrackets_) += 1;
            open = 0;
        } else {
            open = c;
        }
    }
}

/// From the left. In text that goes to the right, what is a small step back in the stream keeps the order of the
/// stream.
void LineWriter::sortLetters() {
    std::stable_sort(letters_.begin(), letters_.end(), [](const Letter& a, const Letter& b) {
        return a.place < b.place || (a.place == b.place && a.rank < b.rank);
    });
}

void LineWriter::append(std::span<const std::uint32_t> spans, std::u32string& out) {
    collect(spans);
    const std::size_t begin = out.size();
    if (hasRightToLeft_) {
        for (Letter& letter : letters_)
            letter.place = letter.left;
        attachMarks();
    }
    if (!inOrder_ || hasRightToLeft_) sortLetters();
    if (overlaps_ || !inOrder_) dropRepeated();
    if (hasRightToLeft_ || beginsWithItsEnd())
        writeMixed(out);
    else
        writeFromTheLeft(out);
    trim(out, begin);
    if (evidence_ != nullptr) showWords(spans, *evidence_);
}

/// Decides about each gap once more, as the writers do.
void LineWriter::showWords(std::span<const std::uint32_t> spans, Evidence& evidence) {
    if (letters_.empty()) return;
    const float threshold = thresholdOfLetters();
    Span line = orientation_.spans[spans.front()];
    for (const std::uint32_t index : spans) {
        const Span& span = orientation_.spans[index];
        if (span.size > line.size) line = span;
    }
    Box word{letters_.front().left, line.bottom, letters_.front().left, line.top};
    Box whole = word;
    std::u32string characters;
    bool isFromTheRight = false;
    const auto endWord = [&] {
        if (isFromTheRight) std::reverse(characters.begin(), characters.end());
        if (!characters.empty()) evidence.show(Topic::word, word, characters);
        characters.clear();
        isFromTheRight = false;
    };
    const auto noteGap = [&](Verdict verdict, const Letter& from, const Letter& to, std::string_view reason) {
        const float size = std::max(from.size, to.size);
        const auto [left, right] = std::minmax(from.right, to.left);
        evidence.note(Topic::gap, verdict, Box{left, line.bottom, right, line.top}, reason,
                      {{"em", (to.left - from.right) / size}, {"threshold", threshold}});
    };
    const Letter* before = nullptr;
    bool blank = false;
    for (const Letter& letter : letters_) {
        if (letter.isBlank) {
            blank = true;
            continue;
        }
        const float size = before == nullptr ? 0 : std::max(letter.size, before->size);
        const float gap = before == nullptr ? 0 : letter.left - before->right;
        const bool isDrawn = blank && gap > kLeastBlank * letter.size;
        const bool isWide = before != nullptr && isBlankBetween(*before, letter, threshold);
        if (isWide && !isDrawn)
            noteGap(Verdict::accepted, *before, letter,
                    gap > threshold * size ? "a blank" : "a form field begins or ends");
        else if (!isDrawn && gap > kNoBlank * size)
            noteGap(Verdict::refused, *before, letter, gap > threshold * size ? "a script without blanks" : "no blank");
        if (isWide || isDrawn) endWord();
        if (characters.empty()) word.left = word.right = letter.left;
        word.left = std::min(word.left, letter.left);
        word.right = std::max(word.right, letter.right);
        whole.left = std::min(whole.left, letter.left);
        whole.right = std::max(whole.right, letter.right);
        characters.append(page_.text, letter.textBegin, letter.textEnd - letter.textBegin);
        isFromTheRight = isFromTheRight || mayBeRightToLeft(page_.text[letter.textBegin]);
        if (letter.right > letter.left || before == nullptr) before = &letter;
        blank = false;
    }
    endWord();
    evidence.note(Topic::line, Verdict::accepted, whole, "wider gaps are blanks", {{"threshold in em", threshold}});
    if (repeated_ > 0)
        evidence.note(Topic::dropped, Verdict::accepted, whole, "letters drawn twice at one place",
                      {{"letters", static_cast<float>(repeated_)}, {"kTwin", kTwin}});
}

} // namespace quillow::pdf
