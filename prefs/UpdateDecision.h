// The pure functions of the update check: which notification the user gets, and how many days lie between two instants.
#pragma once

#include "base/Boxed.h"

#include <QDateTime>

#include <cstdint>

namespace quillow {

enum class UpdateDecision { tellNothing, tellAvailable, tellUpToDate };

/// `latestRelease` is the release number in the list. If it is nil, the result is tellNothing.
[[nodiscard]] UpdateDecision decideAboutUpdate(const Boxed& latestRelease, const Boxed& ownRelease,
                                               bool notifyIsAvailable, bool notAvailable); // selector: none

/// True if two instants are on different calendar days in the time zone of `now`, whatever the time of day.
[[nodiscard]] bool isOnAnotherDay(const QDateTime& instant, const QDateTime& now); // selector: none

inline constexpr std::int64_t kDaysUntilInvitation = 90;

/// True if an instant is more than `kDaysUntilInvitation` days of 86,400 seconds before `now`; false if it is exactly
/// that long ago.
[[nodiscard]] bool isLongAgo(const QDateTime& instant, const QDateTime& now); // selector: none

} // namespace quillow
