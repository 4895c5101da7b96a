// Looks for an item that is no longer where it was: from its former folder outwards, on the same file system, never in a Trash.
#pragma once

#include "platform/qt/files/FileIdentity.h"

#include <chrono>
#include <functional>

namespace quillow {

/// How much one search may cost. Folder entries bound the work; the time bounds the wait on slow disks.
struct SearchBudget {
    std::int64_t entries = 50000;
    std::chrono::milliseconds time{250};
};

/// The clock of the searches; tests bring their own.
using SteadyNow = std::function<std::chrono::steady_clock::time_point()>;

/// Where the item that used to stand at `formerPath` is now: first below its former folder (or the nearest one around it that
/// still exists), then below each folder further up. Follows symbolic links in the former path, but no others. Nothing when it was not found within the budget.
[[nodiscard]] std::optional<QByteArray> findMovedItem(const FileIdentity& item, const QByteArray& formerPath,
                                                      const SearchBudget& budget, const SteadyNow& now);

} // namespace quillow
