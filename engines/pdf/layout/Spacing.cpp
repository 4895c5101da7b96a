#include "engines/pdf/layout/Spacing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace quillow::pdf {

namespace {

constexpr float kBin = 0.02F; ///< ems a bin of the histogram
constexpr float kFirst = -0.2F;
constexpr std::size_t kBins = 100; ///< up to 1.8 em: letter-spaced headings have blanks of over an em
/// Kerning moves letters by less than this from their neighbours' spacing.
constexpr float kKerning = 0.08F;
/// The threshold of lines that say nothing themselves: tight fonts have blanks of 0.2 em, justified lines squeeze them.
constexpr float kUsual = 0.13F;
/// Documents that draw their blanks leave further gaps for kerning and justification.
constexpr float kUsualBesideDrawn = 0.2F;
/// In fonts with narrow blanks, gaps of about their width are blanks: so much of the width.
constexpr float kShareOfDrawn = 0.75F;
/// Above the letter spacing by so much, a gap is a blank in any font.
constexpr float kSurelyBlank = 0.4F;
/// A stretch without gaps parts two kinds of gaps if it is at least so wide. In bins.
constexpr std::size_t kLeastStretch = 2;
/// Words have two or three letters at least, on average: more of the gaps cannot be blanks.
constexpr float kMostBlanks = 0.35F;
/// Blanks of formulas are so much wider than the gaps inside their words. In bins.
constexpr std::size_t kFormulaBlank = 12;
/// Fewer gaps show no letter spacing.
constexpr std::size_t kLeastGaps = 4;

using Histogram = std::array<std::uint32_t, kBins>;

std::size_t binOf(float gap) {
    const float bin = (gap - kFirst) / kBin;
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(std::clamp(bin, 0.0F, static_cast<float>(kBins - 1))));
}

float middleOf(std::size_t bin) {
    return kFirst + (static_cast<float>(bin) + 0.5F) * kBin;
}

/// The bin up to which one in `share` of the gaps are.
std::size_t quantileOf(const Histogram& histogram, std::size_t count, std::size_t share) {
    std::size_t seen = 0;
    for (std::size_t bin = 0; bin < kBins; ++bin) {
        seen += histogram[bin];
        if (share * seen >= count) return bin;
    }
    return 0;
}

/// The usual gap inside words. Words have more letters than blanks, so it is the median as a rule. Formulas may have
/// more blanks; then the smaller third is far from the median with nothing between. Programs whose letters are set in
/// equal cells have gaps of all widths.
float letterSpacing(const Histogram& histogram, std::size_t count) {
    const std::size_t median = quantileOf(histogram, count, 2);
    const std::size_t third = quantileOf(histogram, count, 3);
    if (median - third < kFormulaBlank) return middleOf(median);
    const auto isFree = [&histogram](std::size_t first, std::size_t end) {
        return std::all_of(histogram.begin() + static_cast<std::ptrdiff_t>(first),
                           histogram.begin() + static_cast<std::ptrdiff_t>(end),
                           [](std::uint32_t n) { return n == 0; });
    };
    const std::size_t end = median - kFormulaBlank / 4;
    return middleOf(isFree(third + kFormulaBlank / 4, end) ? third : median);
}

/// Bins without gaps, from `first` to before `end`.
struct Stretch {
    std::size_t first = 0;
    std::size_t end = 0;

    [[nodiscard]] std::size_t length() const { return end - first; }
    [[nodiscard]] float middle() const { return kFirst + (static_cast<float>(first + end) / 2) * kBin; }
};

/// The stretch around a bin, or an empty one if the bin has gaps. It begins at `low` or above and ends at `high` or
/// below.
Stretch stretchAround(const Histogram& histogram, std::size_t bin, std::size_t low, std::size_t high) {
    Stretch found{bin, bin};
    while (found.end < high && histogram[found.end] == 0)
        ++found.end;
    if (found.end == bin) return found;
    while (found.first > low && histogram[found.first - 1] == 0)
        --found.first;
    return found;
}

/// The middle of the stretch that the usual threshold is in: it parts the gaps inside words from those between words.
/// If gaps are just there, they are blanks unless there are too many of them.
float thresholdNear(const Histogram& histogram, std::size_t count, float spacing, float usual) {
    const std::size_t low = binOf(spacing + kKerning);
    const std::size_t high = binOf(spacing + kSurelyBlank);
    const std::size_t bin = binOf(spacing + usual);
    if (const Stretch around = stretchAround(histogram, bin, low, high); around.length() >= kLeastStretch)
        return around.middle();
    std::size_t below = bin;
    while (below > low && histogram[below] != 0)
        --below;
    const Stretch lower = stretchAround(histogram, below, low, high);
    std::size_t above = bin;
    while (above < high && histogram[above] != 0)
        ++above;
    const Stretch upper = stretchAround(histogram, above, low, high);
    std::size_t blanks = 0;
    for (std::size_t i = lower.end; i < kBins; ++i)
        blanks += histogram[i];
    const bool tooMany = static_cast<float>(blanks) > kMostBlanks * static_cast<float>(count);
    if (lower.length() > 0 && !(tooMany && upper.length() >= kLeastStretch)) return lower.middle();
    return upper.length() > 0 ? upper.middle() : spacing + usual;
}

} // namespace

float blankThreshold(const Gaps& gaps, float drawnBlank) {
    const float usual = drawnBlank > 0 ? std::clamp(kShareOfDrawn * drawnBlank, kUsual, kUsualBesideDrawn) : kUsual;
    const std::size_t count = gaps.widths.size();
    if (count < kLeastGaps) return usual;
    std::array<Histogram, 2> histograms{}; // of other gaps, and of those between letters
    std::size_t letterCount = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t isBetweenLetters = gaps.areBetweenLetters[i];
        ++histograms[isBetweenLetters][binOf(gaps.widths[i])];
        letterCount += isBetweenLetters;
    }
    auto& [all, letters] = histograms;
    const float spacing = letterCount < kLeastGaps ? 0 : std::max(letterSpacing(letters, letterCount), -kKerning);
    for (std::size_t bin = 0; bin < kBins; ++bin)
        all[bin] += letters[bin];
    return thresholdNear(all, count, spacing, usual);
}

} // namespace quillow::pdf
