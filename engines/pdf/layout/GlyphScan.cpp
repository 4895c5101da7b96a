#include "engines/pdf/layout/GlyphScan.h"

#include "engines/pdf/layout/Accents.h"
#include "engines/pdf/layout/Letter.h"

#include <algorithm>
#include <limits>
#include <string_view>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace quillow::pdf {

namespace {

/// Whether a character that is not ASCII is written as it is, wherever it is in a line.
constexpr bool isPlainOther(char32_t c) {
    return isPlain(c) && c >= 0x80 && c != kNoBreakSpace && !isBlankCharacter(c);
}

#ifdef __SSE2__
/// Four numbers of the glyphs one place before those of `now`.
__m128 shifted(__m128 before, __m128 now) {
    const __m128 edge = _mm_shuffle_ps(before, now, _MM_SHUFFLE(0, 0, 3, 3));
    return _mm_shuffle_ps(edge, now, _MM_SHUFFLE(2, 1, 2, 0));
}

/// Those two places before.
__m128 shiftedByTwo(__m128 before, __m128 now) {
    return _mm_shuffle_ps(before, now, _MM_SHUFFLE(1, 0, 3, 2));
}
#endif

class Scanner {
public:
    Scanner(const Glyph* glyphs, std::size_t count, const char32_t* text, float start, float size, float wide)
        : glyphs_(glyphs)
        , count_(count)
        , text_(text)
        , start_(start)
        , overlap_(kOverlap * size)
        , kerned_(-kKerned * size)
        , noBlank_(kNoBlank * size)
        , leastBlank_(kLeastBlank * size)
        , wide_(wide)
        , right_(std::numeric_limits<float>::lowest()) {}

    GlyphScan scan() {
        std::size_t i = 0;
#ifdef __SSE2__
        i = scanBlocks();
#endif
        for (; i < count_; ++i)
            addGlyph(i);
        if (!isOrdered_) return {};
        const std::u32string_view text(text_, count_);
        if (hasOthers_)
            isPlain_ = isPlain_ && std::all_of(text.begin(), text.end(),
                                               [](char32_t c) { return isPrintableAscii(c) || isPlainOther(c); });
        if (isKerned_) isPlain_ = isPlain_ && std::none_of(text.begin(), text.end(), isAccent);
        return {true, right_, {isPlain_, hasBlanks_, hasGaps_}};
    }

private:
    static constexpr bool isPrintableAscii(char32_t c) {
        return c >= 0x20 && c < 0x7F;
    }

    [[nodiscard]] float leftOf(std::size_t i) const {
        return start_ + glyphs_[i].offset;
    }
    [[nodiscard]] float rightOf(std::size_t i) const {
        return leftOf(i) + glyphs_[i].width;
    }
    /// The same but for rounding: what spans end at.
    [[nodiscard]] float endOf(std::size_t i) const {
        return start_ + (glyphs_[i].offset + glyphs_[i].width);
    }

    void addGlyph(std::size_t i) {
        const float left = leftOf(i);
        const float right = rightOf(i);
        const bool isBlank = text_[i] == U' ';
        right_ = std::max(right_, endOf(i));
        isOrdered_ = isOrdered_ && right > left && glyphs_[i].text == glyphs_[0].text + i;
        hasBlanks_ = hasBlanks_ || isBlank;
        hasOthers_ = hasOthers_ || !isPrintableAscii(text_[i]);
        if (i == 0) return;
        const float gap = left - rightOf(i - 1);
        const bool isBehindBlank = text_[i - 1] == U' ';
        isOrdered_ =
            isOrdered_ && left >= leftOf(i - 1) && left >= rightOf(i - 1) - overlap_ && left - endOf(i - 1) <= wide_;
        isKerned_ = isKerned_ || gap < kerned_;
        if (isBlank)
            isPlain_ = isPlain_ && !isBehindBlank;
        else if (isBehindBlank)
            isPlain_ = isPlain_ && left - (i == 1 ? leftOf(0) : rightOf(i - 2)) > leastBlank_;
        else
            hasGaps_ = hasGaps_ || gap >= noBlank_;
    }

#ifdef __SSE2__
    /// Adds four glyphs at a time, as `addGlyph` does. Returns how many there were.
    std::size_t scanBlocks() {
        static_assert(sizeof(Glyph) == 3 * sizeof(float));
        constexpr std::size_t kBlock = 4;
        if (count_ < kBlock) return 0;
        const __m128 start = _mm_set1_ps(start_);
        const __m128i ones = _mm_set1_epi32(-1);
        // Before the first glyph there is one without a width, with nothing before it.
        __m128 lefts = _mm_set1_ps(leftOf(0));
        __m128 rights = _mm_set_ps(leftOf(0), -std::numeric_limits<float>::max(), 0, 0);
        __m128 ends = lefts;
        __m128i blanks = _mm_setzero_si128();
        __m128i texts = _mm_add_epi32(_mm_set1_epi32(static_cast<int>(glyphs_[0].text)), _mm_set_epi32(3, 2, 1, 0));
        __m128 furthest = _mm_set1_ps(right_);
        __m128 ordered = _mm_castsi128_ps(ones);
        __m128 plain = ordered;
        __m128 ascii = ordered;
        __m128 anyBlank = _mm_setzero_ps();
        __m128 anyGap = anyBlank;
        __m128 anyKerned = anyBlank;
        std::size_t i = 0;
        for (; i + kBlock <= count_; i += kBlock) {
            const auto* const from = reinterpret_cast<const float*>(glyphs_ + i); // text, offset and width by turns
            const __m128 a = _mm_loadu_ps(from);
            const __m128 b = _mm_loadu_ps(from + kBlock);
            const __m128 c = _mm_loadu_ps(from + 2 * kBlock);
            const __m128 text =
                _mm_shuffle_ps(a, _mm_shuffle_ps(b, c, _MM_SHUFFLE(1, 1, 2, 2)), _MM_SHUFFLE(2, 0, 3, 0));
            const __m128 offset =
                _mm_shuffle_ps(_mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 0, 1, 1)),
                               _mm_shuffle_ps(b, c, _MM_SHUFFLE(2, 2, 3, 3)), _MM_SHUFFLE(2, 0, 2, 0));
            const __m128 width =
                _mm_shuffle_ps(_mm_shuffle_ps(a, b, _MM_SHUFFLE(1, 1, 2, 2)), c, _MM_SHUFFLE(3, 0, 2, 0));
            const __m128i characters = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text_ + i));

            const __m128 left = _mm_add_ps(start, offset);
            const __m128 right = _mm_add_ps(left, width);
            const __m128 end = _mm_add_ps(start, _mm_add_ps(offset, width));
            const __m128 rightBefore = shifted(rights, right);
            const __m128 gap = _mm_sub_ps(left, rightBefore);
            furthest = _mm_max_ps(furthest, end);
            const __m128 hasText = _mm_castsi128_ps(_mm_cmpeq_epi32(_mm_castps_si128(text), texts));
            const __m128 isBehind = _mm_and_ps(_mm_cmpge_ps(left, shifted(lefts, left)),
                                               _mm_cmpge_ps(left, _mm_sub_ps(rightBefore, _mm_set1_ps(overlap_))));
            const __m128 isNear = _mm_cmple_ps(_mm_sub_ps(left, shifted(ends, end)), _mm_set1_ps(wide_));
            ordered = _mm_and_ps(
                ordered, _mm_and_ps(_mm_and_ps(hasText, _mm_cmpgt_ps(right, left)), _mm_and_ps(isBehind, isNear)));

            const __m128i blank = _mm_cmpeq_epi32(characters, _mm_set1_epi32(' '));
            const __m128 isBlank = _mm_castsi128_ps(blank);
            const __m128 isBehindBlank =
                _mm_castsi128_ps(_mm_or_si128(_mm_slli_si128(blank, 4), _mm_srli_si128(blanks, 12)));
            const __m128 isWide = _mm_cmpgt_ps(_mm_sub_ps(left, shiftedByTwo(rights, right)), _mm_set1_ps(leastBlank_));
            // Behind a blank there is a letter, and it is far enough.
            plain = _mm_andnot_ps(
                _mm_and_ps(isBehindBlank, _mm_or_ps(isBlank, _mm_xor_ps(isWide, _mm_castsi128_ps(ones)))), plain);
            anyBlank = _mm_or_ps(anyBlank, isBlank);
            anyGap = _mm_or_ps(
                anyGap, _mm_andnot_ps(_mm_or_ps(isBlank, isBehindBlank), _mm_cmpge_ps(gap, _mm_set1_ps(noBlank_))));
            anyKerned = _mm_or_ps(anyKerned, _mm_cmplt_ps(gap, _mm_set1_ps(kerned_)));
            ascii =
                _mm_and_ps(ascii, _mm_castsi128_ps(_mm_and_si128(_mm_cmpgt_epi32(characters, _mm_set1_epi32(0x1F)),
                                                                 _mm_cmplt_epi32(characters, _mm_set1_epi32(0x7F)))));
            lefts = left;
            rights = right;
            ends = end;
            blanks = blank;
            texts = _mm_add_epi32(texts, _mm_set1_epi32(kBlock));
        }
        constexpr int kAll = 0xF;
        isOrdered_ = _mm_movemask_ps(ordered) == kAll;
        isPlain_ = _mm_movemask_ps(plain) == kAll;
        hasOthers_ = _mm_movemask_ps(ascii) != kAll;
        hasBlanks_ = _mm_movemask_ps(anyBlank) != 0;
        hasGaps_ = _mm_movemask_ps(anyGap) != 0;
        isKerned_ = _mm_movemask_ps(anyKerned) != 0;
        furthest = _mm_max_ps(furthest, _mm_movehl_ps(furthest, furthest));
        right_ = std::max(_mm_cvtss_f32(furthest), _mm_cvtss_f32(_mm_shuffle_ps(furthest, furthest, 1)));
        return i;
    }
#endif

    const Glyph* glyphs_;
    std::size_t count_;
    const char32_t* text_; ///< of the first glyph
    float start_;
    float overlap_;
    float kerned_; ///< a smaller gap may be below an accent
    float noBlank_;
    float leastBlank_;
    float wide_;
    float right_;
    bool isOrdered_ = true;
    bool isPlain_ = true; ///< but for characters that are not ASCII, and for accents
    bool hasOthers_ = false;
    bool hasBlanks_ = false;
    bool hasGaps_ = false;
    bool isKerned_ = false;
};

} // namespace

GlyphScan scanGlyphs(const Page& page, const Run& run, float start, float size, float wide) {
    const Glyph* const glyphs = page.glyphs.data() + run.firstGlyph;
    const std::size_t next = std::size_t{run.firstGlyph} + run.glyphCount;
    const std::size_t begin = glyphs->text;
    const std::size_t end = next < page.glyphs.size() ? page.glyphs[next].text : page.text.size();
    if (end - begin != run.glyphCount) return {};
    return Scanner(glyphs, run.glyphCount, page.text.data() + begin, start, size, wide).scan();
}

} // namespace quillow::pdf
