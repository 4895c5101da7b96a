#include "cli/TextGroup.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace quillow::cli {

namespace {

/// The order makes a text whole or absent after a crash of the system: first its bytes, then its name.
std::optional<OutputFailure> nameAfterSync(std::shared_ptr<UnnamedText> text, UnnamedText::Together together) {
    if (!text) return std::nullopt;
    if (auto failure = text->sync(together)) return failure;
    return text->place();
}

} // namespace

Next TextGroup::add(std::size_t index, Result result, Following following) {
    entries_.push_back({index, std::move(result)});
    if (following == Following::arrived && entries_.size() < kMaximumGroup) return Next::goOn;
    return finish();
}

Next TextGroup::finish() {
    const auto texts =
        std::count_if(entries_.begin(), entries_.end(), [](const Entry& entry) { return !!entry.result.unnamed; });
    const bool isTogether = static_cast<std::size_t>(texts) >= kSyncedTogether && syncTogether_();
    const auto together = isTogether ? UnnamedText::Together::yes : UnnamedText::Together::no;
    Next next = Next::goOn;
    for (auto entry = entries_.begin(); entry != entries_.end() && next == Next::goOn; ++entry) {
        // When its result is told, the text is in its place or dropped, and its file is closed.
        std::optional<OutputFailure> failure = nameAfterSync(std::move(entry->result.unnamed), together);
        next = deliver_(entry->index, std::move(entry->result), std::move(failure));
    }
    entries_.clear();
    return next;
}

} // namespace quillow::cli
