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
/// Above the letter spacing by so much, a gap is a blank in any font.
constexpr float kSurelyBlank = 0.4F;
/// Fewer gaps show no letter spacing.
constexpr std::size_t kLeastGaps = 4;

using Histogram = std::array<std::uint32_t, kBins>;

std::size_t binOf(float gap) {
    const float bin = (gap - kFirst) / kBin;
    return static_cast<std::size_t>(std::clamp(bin, 0.0F, static_cast<float>(kBins - 1)));
}

float middleOf(std::size_t bin) {
    return kFirst + (static_cast<float>(bin) + 0.5F) * kBin;
}

/// The usual gap inside words. Words have more letters than blanks, so it is the median as a rule.
float letterSpacing(const Histogram& histogram, std::size_t count) {
    std::size_t seen = 0;
    for (std::size_t bin = 0; bin < kBins; ++bin) {
        seen += histogram[bin];
        if (2 * seen >= count) return middleOf(bin);
    }
    return 0;
}

/// The middle of the widest stretch without gaps that has gaps above it: those are blanks.
float widestStretch(const Histogram& histogram, float low, float high, float usual) {
    float best = usual;
    std::size_t widest = 0;
    std::size_t length = 0;
    const std::size_t last = binOf(high);
    for (std::size_t bin = binOf(low); bin < kBins; ++bin) {
        if (histogram[bin] == 0) {
            if (bin <= last) ++length;
            continue;
        }
        if (length > widest) {
            widest = length;
            best = middleOf(std::min(bin - 1, last)) - static_cast<float>(length - 1) * kBin / 2;
        }
        if (bin > last) break;
        length = 0;
    }
    return best;
}

} // namespace

float blankThreshold(std::span<const float> gaps, bool drawsBlanks) {
    const float usual = drawsBlanks ? kUsualBesideDrawn : kUsual;
    if (gaps.size() < kLeastGaps) return usual;
    Histogram histogram{};
    for (const float gap : gaps)
        ++histogram[binOf(gap)];
    const float spacing = std::max(letterSpacing(histogram, gaps.size()), -kKerning);
    return widestStretch(histogram, spacing + kKerning, spacing + kSurelyBlank, spacing + usual);
}

} // namespace quillow::pdf
