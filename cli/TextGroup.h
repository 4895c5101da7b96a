// Texts that reach the disk together and then get their names. A sync costs a disk much the same for one text as for a
// hundred.
#pragma once

#include "cli/Batch.h"
#include "cli/Result.h"
#include "cli/UnnamedText.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace quillow::cli {

/// The most results of a group. Each may keep a file open.
inline constexpr std::size_t kMaximumGroup = 128;
/// From so many texts on, everything is synced together. That also writes what other programs have changed on the disk.
inline constexpr std::size_t kSyncedTogether = 4;

class TextGroup {
public:
    /// False if it is not possible or has failed.
    using SyncTogether = std::function<bool()>;
    using Deliver = std::function<Next(std::size_t index, Result result, std::optional<OutputFailure> failure)>;

    /// `syncTogether` syncs all texts that were written so far. `deliver` gets the results in their order: each when
    /// its text has its name, and a failure if it has none. Once it returns stop, the texts that still have no name are
    /// dropped.
    TextGroup(SyncTogether syncTogether, Deliver deliver)
        : syncTogether_(std::move(syncTogether))
        , deliver_(std::move(deliver)) {}

    /// Adds a result. The group ends when it is full or nothing follows at once: nobody waits for a later document.
    [[nodiscard]] Next add(std::size_t index, Result result, Following following);

private:
    struct Entry {
        std::size_t index;
        Result result;
    };

    [[nodiscard]] Next finish();

    const SyncTogether syncTogether_;
    const Deliver deliver_;
    std::vector<Entry> entries_;
};

} // namespace quillow::cli
