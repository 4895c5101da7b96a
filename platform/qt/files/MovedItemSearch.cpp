#include "platform/qt/files/MovedItemSearch.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cstring>
#include <deque>
#include <memory>
#include <string_view>
#include <utility>

namespace quillow {
namespace {

constexpr std::int64_t kEntriesBetweenClockReadings = 256;

QByteArray folderAround(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash > 0 ? path.left(slash) : QByteArray("/");
}

QByteArray joined(const QByteArray& folder, const char* name) {
    return folder.endsWith('/') ? folder + name : folder + '/' + name;
}

/// The folder's path without symbolic links; unchanged if the folder does not exist.
QByteArray realFolder(const QByteArray& folder) {
    return realPath(folder).value_or(folder);
}

bool exists(const QByteArray& path) {
    return ::faccessat(AT_FDCWD, path.constData(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
}

/// The Trash specification of freedesktop.org 1.0: "$topdir/.Trash", "$topdir/.Trash-$uid", and a folder "Trash" in
/// the user's data folder that holds "files" and "info".
bool isTrash(const QByteArray& path, std::string_view name) {
    if (name == ".Trash" || name.substr(0, 7) == ".Trash-") return true;
    return name == "Trash" && exists(joined(path, "files")) && exists(joined(path, "info"));
}

class Search {
public:
    Search(const FileIdentity& item, const SearchBudget& budget, const SteadyNow& now)
        : item_(item)
        , now_(now)
        , entriesLeft_(budget.entries)
        , deadline_(now() + budget.time) {}

    /// Breadth first, because a moved item is usually close.
    std::optional<QByteArray> below(const QByteArray& folder, const QByteArray& searchedAlready) {
        std::deque<QByteArray> folders{folder};
        while (!folders.empty() && !isSpent()) {
            const QByteArray next = std::move(folders.front());
            folders.pop_front();
            if (auto found = among(next, searchedAlready, folders)) return found;
        }
        return std::nullopt;
    }

    [[nodiscard]] bool isSpent() const { return isSpent_; }

private:
    std::optional<QByteArray> among(const QByteArray& folder, const QByteArray& searchedAlready,
                                    std::deque<QByteArray>& folders) {
        const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.constData()), &::closedir);
        if (!stream) return std::nullopt;
        while (const dirent* entry = ::readdir(stream.get())) {
            if (!std::strcmp(entry->d_name, ".") || !std::strcmp(entry->d_name, "..")) continue;
            if (!countEntry()) return std::nullopt;
            const bool mayBeFolder = entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN;
            const bool mayBeItem = entry->d_ino == item_.inode;
            if (!mayBeFolder && !mayBeItem) continue;

            const QByteArray path = joined(folder, entry->d_name);
            if (isTrash(path, entry->d_name)) continue;
            const auto identity = FileIdentity::ofItem(path);
            if (!identity || !identity->isOnFileSystemOf(item_)) continue;
            if (identity->isSameItemAs(item_)) return path;
            if (identity->isDirectory && path != searchedAlready) folders.push_back(path);
        }
        return std::nullopt;
    }

    bool countEntry() {
        if (--entriesLeft_ < 0) isSpent_ = true;
        if (entriesLeft_ % kEntriesBetweenClockReadings == 0 && now_() >= deadline_) isSpent_ = true;
        return !isSpent_;
    }

    const FileIdentity& item_;
    const SteadyNow& now_;
    std::int64_t entriesLeft_;
    std::chrono::steady_clock::time_point deadline_;
    bool isSpent_ = false;
};

} // namespace

std::optional<QByteArray> findMovedItem(const FileIdentity& item, const QByteArray& formerPath,
                                        const SearchBudget& budget, const SteadyNow& now) {
    Search search(item, budget, now);
    QByteArray searched;
    for (QByteArray folder = realFolder(folderAround(formerPath));; folder = realFolder(folderAround(folder))) {
        const auto identity = FileIdentity::ofItem(folder);
        if (identity) {
            if (!identity->isDirectory || !identity->isOnFileSystemOf(item)) return std::nullopt;
            if (auto found = search.below(folder, searched)) return found;
            searched = folder;
        }
        if (search.isSpent() || folder.size() <= 1) return std::nullopt;
    }
}

} // namespace quillow
