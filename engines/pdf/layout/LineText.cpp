#include "engines/pdf/layout/LineText.h"

#include "engines/pdf/layout/Accents.h"
#include "engines/pdf/layout/LineEvidence.h"

#include <algorithm>
#include <cmath>

namespace quillow::pdf {

namespace {

/// The same letter so near its twin is drawn twice to look bold, or as a shadow. In ems.
constexpr float kTwin = 0.12F;
/// Marks may begin so far to the right of the letter that the stream draws behind them. In ems.
constexpr float kBackStep = 0.2F;
/// A mark may be so far beside the letters of its cluster. In ems.
constexpr float kBesideCluster = 0.5F;

/// A run is drawn over another one, and not into its gaps, if so many of its letters are over letters of the other one:
/// a single one may be an accent, or a tick in a box. A letter that its run ends with a blank is a word.
constexpr std::size_t kLeastOver = 2;
/// Sorting tears two runs apart if so many letters of both are among those of the other one. Fewer are a word that
/// touches the next one.
constexpr std::size_t kLeastInterleaved = 3;

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
    for (const std::uint32_t span : spans)
        collectSpan(orientation_.spans[span]);
}

void LineWriter::findRuns(std::span<const std::uint32_t> spans) {
    firstLetters_.clear();
    std::size_t letter = 0;
    for (const std::uint32_t index : spans) {
        firstLetters_.push_back(letter);
        const Span& span = orientation_.spans[index];
        const std::uint32_t begin = page_.glyphs[span.firstGlyph].text;
        const std::uint32_t last = page_.glyphs[span.firstGlyph + span.glyphCount - 1].text;
        while (letter < letters_.size() && letters_[letter].textBegin >= begin && letters_[letter].textBegin <= last)
            ++letter;
    }
}

std::span<Letter> LineWriter::lettersOf(std::size_t span) {
    const std::size_t end = span + 1 < firstLetters_.size() ? firstLetters_[span + 1] : letters_.size();
    return std::span(letters_).subspan(firstLetters_[span], end - firstLetters_[span]);
}

/// Whether a run is drawn over the end of an earlier one, so that their letters would be mixed. Letters that are drawn
/// twice at one place are mixed on purpose.
bool LineWriter::isOver(std::span<const Letter> run, std::span<const Letter> earlier) const {
    if (run.size() < kLeastOver) return false;
    const float left = run.front().left;
    std::size_t over = 0;
    std::size_t interleaved = 0;
    const Letter* below = earlier.data();
    const Letter* const end = below + earlier.size();
    while (below != end && below->right <= left)
        ++below;
    for (const Letter* letter = below; letter != end; ++letter)
        interleaved += !letter->isBlank && letter->middle() > left ? 1 : 0;
    for (const Letter& letter : run) {
        if (letter.isBlank) continue;
        while (below != end && (below->isBlank || below->right <= letter.left))
            ++below;
        if (below == end) break;
        if (areTwins(*below, letter)) return false;
        ++interleaved;
        const float common = std::min(below->right, letter.right) - std::max(below->left, letter.left);
        over += 2 * common > std::min(letter.right - letter.left, below->right - below->left) ? 1 : 0;
    }
    return over >= (run.back().isBlank ? 1 : kLeastOver) && interleaved >= kLeastInterleaved;
}

/// Puts runs that are drawn over others behind them: texts that an optical reader measured too wide, labels over other
/// text.
void LineWriter::keepRunsWhole(std::span<const std::uint32_t> spans) {
    findRuns(spans);
    std::size_t widest = 0; // of the runs so far that follow one another
    float end = 0;          // of the runs, in the order in which they are sorted
    bool isMoved = false;
    for (std::size_t i = 0; i < firstLetters_.size(); ++i) {
        const std::span<Letter> run = lettersOf(i);
        if (run.empty()) continue;
        const float left = run.front().left;
        const std::span<Letter> earlier = lettersOf(widest);
        const bool follows = i > 0 && !earlier.empty() && left > earlier.front().left;
        if (!follows) isMoved = false;
        const float move = follows && left < end && (isMoved || isOver(run, earlier)) ? end - left : 0;
        if (move > 0) {
            isMoved = true;
            for (Letter& letter : run)
                letter.place += move;
            for (Letter& letter : run) {
                letter.isApart = !letter.isBlank;
                if (letter.isApart) break;
            }
        }
        const float right = run.back().right + move;
        if (follows && right < end) continue;
        widest = i;
        end = right;
    }
}

/// Whether it is the same letter at one place.
bool LineWriter::areTwins(const Letter& first, const Letter& letter) const {
    const auto textOf = [this](const Letter& of) {
        return std::u32string_view(page_.text).substr(of.textBegin, of.textEnd - of.textBegin);
    };
    return std::abs(first.left - letter.left) < kTwin * letter.size &&
           std::abs(first.right - letter.right) < kTwin * letter.size && textOf(first) == textOf(letter);
}

/// Of equal letters at one place the first stays.
void LineWriter::dropRepeated() {
    std::size_t kept = 0;
    for (const Letter& letter : letters_) {
        bool isTwin = false;
        constexpr std::size_t kNeighbours = 4;
        for (std::size_t back = 1; back <= kNeighbours && back <= kept && !isTwin; ++back) {
            isTwin = letter.right - letter.left > kTwin * letter.size && areTwins(letters_[kept - back], letter);
        }
        if (!isTwin) letters_[kept++] = letter;
    }
    letters_.resize(kept);
}

float LineWriter::thresholdOfLetters() {
    gapWidths_.clear();
    gapsAreBetweenLetters_.clear();
    float drawnBlank = 0;
    float widest = 0;
    const Letter* before = nullptr;
    for (const Letter& letter : letters_) {
        if (letter.isBlank) {
            if (letter.right - letter.left > drawnBlank * letter.size)
                drawnBlank = (letter.right - letter.left) / letter.size;
        } else if (letter.right == letter.left) {
            continue; // a mark
        } else if (before != nullptr && !before->isBlank && !letter.isApart) {
            const float size = std::max(letter.size, before->size);
            const float width = (letter.left - before->right) / size;
            widest = std::max(widest, width);
            gapWidths_.push_back(width);
            const bool isBetweenLetters =
                isAlphabetic(page_.text[before->textEnd - 1]) && isAlphabetic(page_.text[letter.textBegin]);
            gapsAreBetweenLetters_.push_back(isBetweenLetters ? 1 : 0);
        }
        before = &letter;
    }
    // Most lines of documents that draw their blanks have no other gaps to judge.
    return widest < kNoBlank ? kNoBlank : blankThreshold({gapWidths_, gapsAreBetweenLetters_}, drawnBlank);
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

/// Writes a sign that is drawn over the mark before it, which has been written. Returns false if it is not.
bool LineWriter::composeOverlay(const Letter& mark, const Letter& letter, std::u32string& out) const {
    if (out.empty() || letter.textEnd - letter.textBegin != 1 || !isOverlay(out.back())) return false;
    if (std::abs(letter.left - mark.left) > kBackStep * letter.size) return false;
    const char32_t whole = overlaid(out.back(), page_.text[letter.textBegin]);
    if (whole == 0) return false;
    out.back() = whole;
    return true;
}

void LineWriter::writeFromTheLeft(std::u32string& out) {
    const float threshold = thresholdOfLetters();
    const Letter* before = nullptr;
    const Letter* mark = nullptr; // behind it
    bool blank = false;
    for (const Letter& letter : letters_) {
        if (letter.isBlank) {
            blank = true;
            continue;
        }
        if (mark != nullptr && composeOverlay(*mark, letter, out)) {
            before = &letter;
            mark = nullptr;
            continue;
        }
        if (before != nullptr && letter.isApart) {
            out.push_back(U' ');
        } else if (before != nullptr) {
            if (letter.left < before->right - kKerned * letter.size && compose(*before, letter, out)) {
                if (letter.right > before->right) before = &letter;
                blank = false;
                continue;
            }
            const bool drawn = blank && letter.left - before->right > kLeastBlank * letter.size;
            if ((drawn || isBlankBetween(page_, *before, letter, threshold)) &&
                !underscores_.append(before->right, letter.left, letter.size, out))
                out.push_back(U' ');
        }
        const char32_t c = page_.text[letter.textBegin];
        if (letter.textEnd - letter.textBegin == 1 && c < kFirstPresentationForm && c != kSoftHyphen)
            out.push_back(c);
        else
            appendLetter(page_, letter, out);
        mark = letter.right > letter.left ? nullptr : &letter;
        if (mark == nullptr || before == nullptr) before = &letter;
        blank = false;
    }
}

/// From the left. In text that goes to the right, what is a small step back in the stream keeps the order of the
/// stream.
void LineWriter::sortLetters() {
    std::stable_sort(letters_.begin(), letters_.end(), [](const Letter& a, const Letter& b) {
        return a.place < b.place || (a.place == b.place && a.rank < b.rank);
    });
}

/// Evidence needs the letters, which a plain line does not collect.
bool LineWriter::mayBePlain() const {
    return !underscores_.areChosen() && !mixed_.isPageFromTheRight() && evidence_ == nullptr;
}

void LineWriter::append(std::span<const std::uint32_t> spans, std::u32string& out) {
    underscores_.choose(orientation_, spans);
    if (mayBePlain() && plain_.append(spans, out)) return;
    collect(spans);
    const std::size_t begin = out.size();
    if (hasRightToLeft_) {
        for (Letter& letter : letters_)
            letter.place = letter.left;
        mixed_.attachMarks(letters_);
    }
    if (!inOrder_ && overlaps_ && !hasRightToLeft_) keepRunsWhole(spans);
    if (!inOrder_ || hasRightToLeft_) sortLetters();
    const std::size_t letterCount = letters_.size();
    if (overlaps_ || !inOrder_) dropRepeated();
    if (hasRightToLeft_ || mixed_.isPageFromTheRight()) {
        mixed_.write(letters_, thresholdOfLetters(), out);
    } else {
        writeFromTheLeft(out);
    }
    trim(out, begin);
    if (evidence_ != nullptr) showWords(spans, letterCount - letters_.size(), *evidence_);
}

void LineWriter::showWords(std::span<const std::uint32_t> spans, std::size_t repeated, Evidence& evidence) {
    Span line = orientation_.spans[spans.front()]; // as high as its largest letters, as Line is
    for (const std::uint32_t index : spans) {
        const Span& span = orientation_.spans[index];
        const float left = std::min(line.left, span.left);
        const float right = std::max(line.right, span.right);
        if (span.size > line.size) line = span;
        line.left = left;
        line.right = right;
    }
    const Box area{line.left, line.bottom, line.right, line.top};
    showLine(page_, area, letters_, thresholdOfLetters(), evidence);
    if (repeated > 0)
        evidence.note(Topic::dropped, Verdict::accepted, area, "letters drawn twice at one place",
                      {{"letters", static_cast<float>(repeated)}, {"kTwin", kTwin}});
}

} // namespace quillow::pdf
