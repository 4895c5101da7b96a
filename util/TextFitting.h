// Cutting a text to a width. The definition is a loop: while the text with ".." after it is too wide and holds two units or more,
// its last unit goes. Measured so, a long text costs the square of its length; here most lengths are ruled out unmeasured.
#pragma once

#include <QString>

#include <cstdint>

namespace quillow {

class TextMeasure;
struct TextAttributes;

/// For one text.
class TextFitting { // selector: none
public:
    /// A text is taken to be narrower than a beginning of it by no more than the width of so many "M": that is far more than what
    /// kerning, joining letters or a ligature of a word take back.
    static constexpr int kSeam = 64;
    /// The loop is followed to the letter until so many units were measured, enough for cutting to some 30,000 units. A text that
    /// needs more, since thousands of its units take up no width or the limit is wider than any screen, is cut where halving
    /// finds a beginning that fits.
    static constexpr std::int64_t kLoopUnits = 4'000'000;
    /// Halving ends when it has measured so many times the length of the text.
    static constexpr std::int64_t kHalvingRounds = 4;

    TextFitting(const TextMeasure& textMeasure, const TextAttributes& attributes, std::int32_t limit);
    [[nodiscard]] QString fitted(const QString& text);

private:
    [[nodiscard]] double width(const QString& text);
    [[nodiscard]] bool isFarTooWide(const QString& text) { return width(text) > limit_ + seam_; }
    [[nodiscard]] bool fits(const QString& beginning);
    /// The length of a beginning from which on every one is too wide, as short as can be told in few steps.
    [[nodiscard]] qsizetype shortestFarTooWide(const QString& text, qsizetype narrow, qsizetype wide);
    [[nodiscard]] qsizetype fittingByHalves(const QString& text, qsizetype tooLong);

    const TextMeasure& textMeasure_;
    const TextAttributes& attributes_;
    double limit_;
    double seam_;
    std::int64_t measured_ = 0; ///< units
};

} // namespace quillow
