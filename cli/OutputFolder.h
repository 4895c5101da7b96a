// Writes the texts into the output folder and the folders below it. Each file appears whole or not at all.
#pragma once

#include "cli/PendingFile.h"
#include "posix/FileDescriptor.h"

#include <ctime>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>

namespace quillow::cli {

struct OutputFailure {
    std::string detail;       ///< the system's error message, or a phrase such as "is read-only"
    bool nameIsInUse = false; ///< the write failed only because a file of that name exists
};

class OutputFolder {
public:
    enum class Missing { made, failure };

    /// Opens the folder. With Missing::made it creates a missing folder if its parent exists.
    [[nodiscard]] static std::variant<OutputFolder, OutputFailure> open(const std::string& path, Missing missing);

    /// When the file of that name was last changed; std::nullopt if there is none.
    [[nodiscard]] std::optional<timespec> changeTime(const std::string& name) const;

    /// Writes a file into the folder, or, for "a/b.txt", into a subfolder, which is created if it is missing. Links
    /// to subfolders are not followed. Other programs see either the old file or the complete new one. A failure
    /// leaves the old file and no other. The new file gets the mode of the file that it replaces, and its owner if
    /// the system allows that. A file that the user may not write to is not replaced, nor is a file that nobody may
    /// write to: whoever removed that right wants to keep the file, although replacing it needs only the rights of the
    /// folder. May be called from several threads at once.
    [[nodiscard]] std::optional<OutputFailure> write(const std::string& name, std::string_view content,
                                                     Present present) const;

    /// Syncs the folder and its subfolders, so that the new names survive a crash. Call it once, after the last file.
    [[nodiscard]] std::optional<OutputFailure> sync() const;

    /// True if the folder has a file of that name with that content, and not a link.
    [[nodiscard]] bool holds(const std::string& name, std::string_view content) const;

    /// Removes the temporary files that killed runs left in the folder and in those subfolders.
    void removeLeftOver(const std::set<std::string, std::less<>>& below) const;

private:
    /// The subfolders that texts were written to, and their parents.
    struct Below {
        std::mutex mutex;
        std::set<std::string, std::less<>> names;
    };

    explicit OutputFolder(FileDescriptor folder)
        : folder_(std::move(folder))
        , below_(std::make_unique<Below>()) {}

    void remember(std::string_view below) const;

    FileDescriptor folder_;
    std::unique_ptr<Below> below_;
};

} // namespace quillow::cli
