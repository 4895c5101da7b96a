#include "util/TextFitting.h"

#include "platform/TextMeasure.h"

#include <algorithm>

namespace quillow {
namespace {

constexpr qsizetype kFirstProbe = 64;
constexpr qsizetype kNarrowEnough = 16;

} // namespace

TextFitting::TextFitting(const TextMeasure& textMeasure, const TextAttributes& attributes, std::int32_t limit)
    : textMeasure_(textMeasure)
    , attributes_(attributes)
    , limit_(limit)
    , seam_(kSeam * textMeasure.width(QStringLiteral("M"), attributes)) {}

double TextFitting::width(const QString& text) {
    measured_ += text.size();
    return textMeasure_.width(text, attributes_);
}

bool TextFitting::fits(const QString& beginning) {
    return width(beginning + QStringLiteral("..")) <= limit_;
}

QString TextFitting::fitted(const QString& text) {
    // Doubles the length of the prefix until one shows that the text is too wide, or until the prefix is the whole
    // text.
    qsizetype narrow = 0;
    qsizetype probe = kFirstProbe;
    while (probe < text.size() && !isFarTooWide(text.left(probe))) {
        narrow = probe;
        probe *= 2;
    }
    qsizetype length = text.size();
    if (probe < text.size())
        length = shortestFarTooWide(text, narrow, probe) - 1;
    else if (width(text) <= limit_)
        return text;

    // The loop. All longer prefixes are known to be too wide.
    const std::int64_t end = measured_ + kLoopUnits;
    for (; length >= 2 && !fits(text.left(length)); --length) {
        if (measured_ < end) continue;
        length = fittingByHalves(text, length);
        break;
    }
    return text.left(length) + QStringLiteral("..");
}

qsizetype TextFitting::shortestFarTooWide(const QString& text, qsizetype narrow, qsizetype wide) {
    const std::int64_t end = measured_ + text.size() * kHalvingRounds;
    while (wide - narrow > kNarrowEnough && measured_ < end) {
        const qsizetype middle = narrow + (wide - narrow) / 2;
        (isFarTooWide(text.left(middle)) ? wide : narrow) = middle;
    }
    return wide;
}

qsizetype TextFitting::fittingByHalves(const QString& text, qsizetype tooLong) {
    const std::int64_t end = measured_ + text.size() * kHalvingRounds;
    qsizetype fitting = 1;
    while (tooLong - fitting > 1 && measured_ < end) {
        const qsizetype middle = fitting + (tooLong - fitting) / 2;
        (fits(text.left(middle)) ? fitting : tooLong) = middle;
    }
    return fitting;
}

} // namespace quillow
