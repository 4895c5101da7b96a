// Date formatting with ICU and the CLDR: Qt's own locales have no medium styles.
#pragma once

#include "platform/DateFormatting.h"

#include <QByteArray>

namespace quillow {

class IcuDateFormatting final : public DateFormatting {
public:
    [[nodiscard]] QString localizedStringFromDate(const QDateTime& date, DateStyle dateStyle,
                                                  DateStyle timeStyle) const override;
    [[nodiscard]] std::unique_ptr<DateFormatter> formatterWithPattern(const QString& dateFormat) const override;

    /// The locale of dates as an ICU locale name. It is chosen as the C library does: LC_ALL before LC_TIME before
    /// LANG. For example, "de_DE.UTF-8" gives "de_DE". The C locale has no ICU counterpart and gives "en_US".
    [[nodiscard]] static QByteArray localeName();
};

} // namespace quillow
