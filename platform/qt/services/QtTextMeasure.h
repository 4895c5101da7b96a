// Text widths from Qt's text shaping. Needs a QGuiApplication.
#pragma once

#include "platform/TextMeasure.h"

namespace quillow {

class QtTextMeasure final : public TextMeasure {
public:
    [[nodiscard]] double width(const QString& text, const TextAttributes& attributes) const override;
};

} // namespace quillow
