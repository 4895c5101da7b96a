#include "util/MWDateTagElaborated.h"

#include "base/Replacement.h"
#include "platform/Clock.h"
#include "util/TimeFields.h"

#include <utility>

namespace quillow {

Boxed MWDateTagElaborated::transformedValue(const Boxed& value) const {
    // Nil gives the empty string.
    QString text = value.string().value_or(QStringLiteral(""));
    // The current instant, in six parts.
    const TimeFields now(clock_.now());
    // One tag after the other, each in the whole text. Inserted digits cannot form a new tag.
    const std::pair<QStringView, QString> replacements[] = {
        {u"<yy>", twoDigits(now.year % 100)}, {u"<YY>", QString::number(now.year)}, {u"<mm>", twoDigits(now.month)},
        {u"<dd>", twoDigits(now.day)},        {u"<hh>", twoDigits(now.hour)},       {u"<ii>", twoDigits(now.minute)},
        {u"<ss>", twoDigits(now.second)},
    };
    for (const auto& [tag, digits] : replacements)
        text = stringByReplacingOccurrences(text, tag, digits);
    return text;
}

} // namespace quillow
