// Formats all dates in one plain form, and records the requested styles and patterns.
#pragma once

#include "platform/DateFormatting.h"

#include <QStringList>

#include <utility>
#include <vector>

namespace quillow {

class FakeDateFormatting final : public DateFormatting {
public:
    [[nodiscard]] QString localizedStringFromDate(const QDateTime& date, DateStyle dateStyle,
                                                  DateStyle timeStyle) const override {
        styles_.emplace_back(dateStyle, timeStyle);
        return date.toString(QStringLiteral("d.M.yyyy HH:mm:ss"));
    }

    [[nodiscard]] std::unique_ptr<DateFormatter> formatterWithPattern(const QString& dateFormat) const override {
        patterns_.append(dateFormat);
        return std::make_unique<Formatter>(formattedByPattern_);
    }

    [[nodiscard]] const std::vector<std::pair<DateStyle, DateStyle>>& styles() const { return styles_; }
    [[nodiscard]] const QStringList& patterns() const { return patterns_; }
    /// How many dates were formatted with a pattern.
    [[nodiscard]] int formattedByPattern() const { return *formattedByPattern_; }

private:
    class Formatter final : public DateFormatter {
    public:
        explicit Formatter(std::shared_ptr<int> formatted)
            : formatted_(std::move(formatted)) {}
        [[nodiscard]] QString stringFromDate(const QDateTime&) const override {
            ++*formatted_;
            return QStringLiteral("by pattern");
        }

    private:
        std::shared_ptr<int> formatted_;
    };

    mutable std::vector<std::pair<DateStyle, DateStyle>> styles_;
    mutable QStringList patterns_;
    std::shared_ptr<int> formattedByPattern_ = std::make_shared<int>(0);
};

} // namespace quillow
