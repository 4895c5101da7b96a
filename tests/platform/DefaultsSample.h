// One value of each type that a settings file can contain. The test and its second process share them.
#pragma once

#include "base/Boxed.h"

#include <QTimeZone>

namespace quillow {

inline Boxed::Dictionary defaultsSample() {
    return {{QStringLiteral("absent"), nullptr},
            {QStringLiteral("bool"), true},
            {QStringLiteral("bytes"), QByteArray("\0\xFF", 2)},
            {QStringLiteral("date"), QDateTime(QDate(2026, 11, 21), QTime(9, 41, 12, 345), QTimeZone::utc())},
            {QStringLiteral("double"), 1.0},
            {QStringLiteral("emptyBytes"), QByteArray("")},
            {QStringLiteral("emptyString"), QString(QLatin1String(""))},
            {QStringLiteral("false"), false},
            {QStringLiteral("integer"), std::int64_t{1} << 62},
            {QStringLiteral("list"), Boxed::Array{1, true, Boxed()}},
            {QStringLiteral("string"), QStringLiteral("true")},
            {QStringLiteral("zero"), 0}};
}

} // namespace quillow
