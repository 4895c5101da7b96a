// Port: dates as the user's locale writes them.
#pragma once

#include <QDateTime>
#include <QString>

#include <memory>

namespace quillow {

enum class DateStyle { none, brief, medium, full };

/// Formats dates with a fixed pattern.
class DateFormatter {
public:
    virtual ~DateFormatter() = default;
    [[nodiscard]] virtual QString stringFromDate(const QDateTime& date) const = 0;
};

class DateFormatting {
public:
    virtual ~DateFormatting() = default;

    /// The date and time in the user's current locale (that of LC_TIME) with the given styles.
    [[nodiscard]] virtual QString localizedStringFromDate(const QDateTime& date, DateStyle dateStyle,
                                                          DateStyle timeStyle) const = 0;

    /// A formatter for a pattern of Unicode's UTS #35 ("YYYY" is the week-based year) in the user's current locale.
    /// Never null.
    [[nodiscard]] virtual std::unique_ptr<DateFormatter> formatterWithPattern(const QString& dateFormat) const = 0;
};

} // namespace quillow
