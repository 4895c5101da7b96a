#include "prefs/UpdateDecision.h"

#include <QTimeZone>

namespace quillow {

UpdateDecision decideAboutUpdate(const Boxed& latestRelease, const Boxed& ownRelease, bool notifyIsAvailable,
                                 bool notAvailable) {
    if (latestRelease.isNil()) return UpdateDecision::tellNothing;
    if (latestRelease.longValue() > ownRelease.longValue())
        return notifyIsAvailable ? UpdateDecision::tellAvailable : UpdateDecision::tellNothing;
    return notAvailable ? UpdateDecision::tellUpToDate : UpdateDecision::tellNothing;
}

bool isOnAnotherDay(const QDateTime& instant, const QDateTime& now) {
    return instant.toTimeZone(now.timeZone()).date() != now.date();
}

bool isLongAgo(const QDateTime& instant, const QDateTime& now) {
    constexpr std::int64_t kMillisecondsADay = 86'400'000;
    return instant.msecsTo(now) > kDaysUntilInvitation * kMillisecondsADay;
}

} // namespace quillow
