// The pure part of the update check: what to tell about a release, and how far apart two instants are as the user counts days.
#pragma once

#include "base/Boxed.h"

#include <QDateTime>

#include <cstdint>

namespace quillow {

enum class UpdateDecision { tellNothing, tellAvailable, tellUpToDate };

/// `latestRelease` is what the list says, nil when it says nothing: then nothing is told.
[[nodiscard]] UpdateDecision decideAboutUpdate(const Boxed& latestRelease, const Boxed& ownRelease,
                                               bool notifyIsAvailable, bool notAvailable); // selector: none

/// Whether two instants fall on different calendar days in the time zone of `now`. Time of day plays no part.
[[nodiscard]] bool isOnAnotherDay(const QDateTime& instant, const QDateTime& now); // selector: none

inline constexpr std::int64_t kDaysUntilInvitation = 90;

/// Whether an instant lies more than `kDaysUntilInvitation` days of 86,400 seconds before `now`; exactly that long ago is not
/// long ago.
[[nodiscard]] bool isLongAgo(const QDateTime& instant, const QDateTime& now); // selector: none

} // namespace quillow
