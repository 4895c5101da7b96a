// Dates by ICU and the CLDR: Qt's own locales have no medium styles.
#pragma once

#include "platform/DateFormatting.h"

#include <QByteArray>

namespace quillow {

class IcuDateFormatting final : public DateFormatting {
public:
    [[nodiscard]] QString localizedStringFromDate(const QDateTime& date, DateStyle dateStyle,
                                                  DateStyle timeStyle) const override;
    [[nodiscard]] std::unique_ptr<DateFormatter> formatterWithPattern(const QString& dateFormat) const override;

    /// The locale of dates as the C library chooses it, LC_ALL before LC_TIME before LANG, as an ICU locale name:
    /// "de_DE.UTF-8" gives "de_DE". The C locale has no words of its own for this; it gives "en_US".
    [[nodiscard]] static QByteArray localeName();
};

} // namespace quillow
