// Port: dates as the user's locale writes them.
#pragma once

#include <QDateTime>
#include <QString>

namespace quillow {

enum class DateStyle { none, brief, medium, full };

class DateFormatting {
public:
    virtual ~DateFormatting() = default;

    /// The date and time in the user's current locale (that of LC_TIME) with the given styles.
    [[nodiscard]] virtual QString localizedStringFromDate(const QDateTime& date, DateStyle dateStyle,
                                                          DateStyle timeStyle) const = 0;
};

} // namespace quillow
