// A log view in memory that keeps each character's colour.
#pragma once

#include "platform/LogView.h"

#include <optional>
#include <vector>

namespace quillow {

class FakeLogView final : public LogView {
public:
    [[nodiscard]] QString string() const override { return text_; }
    [[nodiscard]] qsizetype length() const override { return text_.size(); }

    void replaceCharactersInRange(const TextRange& range, const QString& text) override {
        text_.replace(range.location, range.length, text);
        const auto first = colors_.begin() + range.location;
        const auto at = colors_.erase(first, first + range.length);
        colors_.insert(at, static_cast<std::size_t>(text.size()), std::nullopt);
    }

    void addForegroundColor(const Color& color, const TextRange& range) override {
        for (qsizetype i = 0; i < range.length; ++i)
            colors_.at(static_cast<std::size_t>(range.location + i)) = color;
    }

    void setNeedsDisplay() override { ++displays_; }
    void scrollRangeToVisible(const TextRange& range) override { scrolledTo_ = range; }

    /// One entry for each character; std::nullopt for a character without a colour.
    [[nodiscard]] const std::vector<std::optional<Color>>& colors() const { return colors_; }
    [[nodiscard]] int displays() const { return displays_; }
    [[nodiscard]] const std::optional<TextRange>& scrolledTo() const { return scrolledTo_; }

private:
    QString text_;
    std::vector<std::optional<Color>> colors_;
    int displays_ = 0;
    std::optional<TextRange> scrolledTo_;
};

} // namespace quillow
