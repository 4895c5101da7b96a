// The calendar fields of an instant, and how they are written.
#pragma once

#include <QDateTime>
#include <QString>

namespace quillow {

struct TimeFields { // selector: none
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;

    /// In the time zone of the instant itself.
    explicit TimeFields(const QDateTime& instant)
        : year(instant.date().year())
        , month(instant.date().month())
        , day(instant.date().day())
        , hour(instant.time().hour())
        , minute(instant.time().minute())
        , second(instant.time().second()) {}
};

/// At least two digits, padded with a zero.
[[nodiscard]] inline QString twoDigits(int number) { // selector: none
    return QString::number(number).rightJustified(2, u'0');
}

} // namespace quillow
