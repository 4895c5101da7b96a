// Widths of texts by Qt's own shaping. A QGuiApplication must be there.
#pragma once

#include "platform/TextMeasure.h"

namespace quillow {

class QtTextMeasure final : public TextMeasure {
public:
    [[nodiscard]] double width(const QString& text, const TextAttributes& attributes) const override;
};

} // namespace quillow
