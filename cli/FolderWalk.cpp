#include "cli/FolderWalk.h"

#include "cli/Paths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace quillow::cli {

namespace {

namespace fs = std::filesystem;

enum class EntryKind { document, folder };

struct Entry {
    std::string path;
    EntryKind kind = EntryKind::document;
};

std::optional<EntryKind> kindOf(const fs::directory_entry& entry) {
    std::error_code ignored;
    const std::string path = entry.path().string();
    const bool hasDocumentName = documentKindForExtension(extensionOf(path)).has_value();
    const bool isLink = entry.is_symlink(ignored);
    if (entry.is_directory(ignored)) {
        if (extensionOf(path) == "rtfd") return EntryKind::document;
        return isLink ? std::nullopt : std::optional(EntryKind::folder);
    }
    if (!hasDocumentName) return std::nullopt;
    // A broken link was meant to be a document; reading it later reports the error. Pipes and devices are left out.
    const bool leadsNowhere = isLink && !entry.exists(ignored);
    return entry.is_regular_file(ignored) || leadsNowhere ? std::optional(EntryKind::document) : std::nullopt;
}

std::vector<Entry> entriesOf(const std::string& folder, std::error_code& error) {
    std::vector<Entry> entries;
    fs::directory_iterator at(folder, error);
    for (const fs::directory_iterator end; !error && at != end; at.increment(error))
        if (const auto kind = kindOf(*at)) entries.push_back({joined(folder, at->path().filename().string()), *kind});
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.path < b.path; });
    return entries;
}

} // namespace

void walkFolder(const std::string& folder, const OnFound& onFound) {
    std::vector<Entry> waiting = {{folder, EntryKind::folder}}; // a stack: the next entry is the last
    while (!waiting.empty()) {
        Entry entry = std::move(waiting.back());
        waiting.pop_back();
        if (entry.kind == EntryKind::document) {
            onFound(std::move(entry.path), std::nullopt);
            continue;
        }
        std::error_code error;
        std::vector<Entry> entries = entriesOf(entry.path, error);
        if (error) onFound(entry.path, InputFailure{Reason::unreadable, error.message()});
        waiting.insert(waiting.end(), std::make_move_iterator(entries.rbegin()),
                       std::make_move_iterator(entries.rend()));
    }
}

} // namespace quillow::cli
