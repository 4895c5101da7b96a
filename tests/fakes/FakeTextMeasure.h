// A text measure in which every code unit is 10 wide, unless the test sets a width or the kerning of a pair. It
// counts the measured units.
#pragma once

#include "platform/TextMeasure.h"

#include <QHash>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace quillow {

class FakeTextMeasure final : public TextMeasure {
public:
    [[nodiscard]] double width(const QString& text, const TextAttributes& attributes) const override {
        attributes_.push_back(attributes);
        measuredUnits_ += text.size();
        double sum = 0;
        for (qsizetype i = 0; i < text.size(); ++i) {
            sum += widths_.value(text[i], kWidth);
            if (i > 0) sum += kerning_.value({text[i - 1], text[i]}, 0);
        }
        return sum;
    }

    void setWidth(QChar unit, double width) { widths_.insert(unit, width); }
    /// Makes `unit` wider by `kerning` when it follows `before`; narrower if negative.
    void setKerning(QChar before, QChar unit, double kerning) { kerning_.insert({before, unit}, kerning); }

    [[nodiscard]] std::int64_t measuredUnits() const { return measuredUnits_; }
    [[nodiscard]] const TextAttributes& lastAttributes() const { return attributes_.back(); }

private:
    static constexpr double kWidth = 10;
    QHash<QChar, double> widths_;
    QHash<std::pair<QChar, QChar>, double> kerning_;
    mutable std::int64_t measuredUnits_ = 0;
    mutable std::vector<TextAttributes> attributes_;
};

} // namespace quillow
