// Cuts a text to a width. A loop defines the result: while the text with ".." after it is too wide and has two
// units or more, its last unit is removed. That loop takes quadratic time for a long text; this class rules out
// most lengths without measuring them.
#pragma once

#include <QString>

#include <cstdint>

namespace quillow {

class TextMeasure;
struct TextAttributes;

/// One object fits one text.
class TextFitting { // selector: none
public:
    /// The assumed limit, in widths of "M", by which a text can be narrower than one of its prefixes. It is far
    /// more than what kerning, joined letters or a ligature can save.
    static constexpr int kSeam = 64;
    /// The number of units that the loop may measure, enough to cut a text to some 30,000 units. A text needs more
    /// if thousands of its units have no width or the limit is wider than any screen; binary search then finds a
    /// prefix that fits.
    static constexpr std::int64_t kLoopUnits = 4'000'000;
    /// A binary search may measure this many times the length of the text.
    static constexpr std::int64_t kHalvingRounds = 4;

    TextFitting(const TextMeasure& textMeasure, const TextAttributes& attributes, std::int32_t limit);
    [[nodiscard]] QString fitted(const QString& text);

private:
    [[nodiscard]] double width(const QString& text);
    [[nodiscard]] bool isFarTooWide(const QString& text) { return width(text) > limit_ + seam_; }
    [[nodiscard]] bool fits(const QString& beginning);
    /// A length from which on all prefixes are too wide, as short as a few steps of binary search can find.
    [[nodiscard]] qsizetype shortestFarTooWide(const QString& text, qsizetype narrow, qsizetype wide);
    [[nodiscard]] qsizetype fittingByHalves(const QString& text, qsizetype tooLong);

    const TextMeasure& textMeasure_;
    const TextAttributes& attributes_;
    double limit_;
    double seam_;
    std::int64_t measured_ = 0; ///< units
};

} // namespace quillow
