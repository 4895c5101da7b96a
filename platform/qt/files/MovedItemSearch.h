// Searches for a moved item: from its former folder outwards, on the same file system, never in a Trash.
#pragma once

#include "platform/qt/files/FileIdentity.h"

#include <chrono>
#include <functional>

namespace quillow {

/// The limits of one search. `entries` limits the number of folder entries; `time` limits the wait on slow disks.
struct SearchBudget {
    std::int64_t entries = 50000;
    std::chrono::milliseconds time{250};
};

/// The clock of the searches. Tests supply their own.
using SteadyNow = std::function<std::chrono::steady_clock::time_point()>;

/// The current path of the item that was at `formerPath`. Searches first below its former folder (or the nearest
/// enclosing folder that still exists), then below each folder further up. Follows symbolic links in the former path,
/// but no others. Returns std::nullopt if the item was not found within the budget.
[[nodiscard]] std::optional<QByteArray> findMovedItem(const FileIdentity& item, const QByteArray& formerPath,
                                                      const SearchBudget& budget, const SteadyNow& now);

} // namespace quillow
