// Writes the texts into the output folder and the folders below it. Each file appears whole or not at all.
#pragma once

#include "cli/PendingFile.h"
#include "cli/UnnamedText.h"
#include "posix/FileDescriptor.h"

#include <sys/types.h>

#include <ctime>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>

namespace quillow::cli {

class OutputFolder {
public:
    enum class Missing { made, failure };

    /// Opens the folder. With Missing::made it creates a missing folder if its parent exists.
    [[nodiscard]] static std::variant<OutputFolder, OutputFailure> open(const std::string& path, Missing missing);

    /// When the file of that name was last changed; std::nullopt if there is none.
    [[nodiscard]] std::optional<timespec> changeTime(const std::string& name) const;

    /// Writes a text that will be a file in the folder, or, for "a/b.txt", in a subfolder, which is created if it is
    /// missing. Links to subfolders are not followed. Other programs see either the old file or, from place() on, the
    /// complete new one. A failure leaves the old file and no other. The new file gets the mode of the file that it
    /// replaces, and its owner if the system allows that. A file that the user may not write to is not replaced, nor is
    /// a file that nobody may write to: whoever removed that right wants to keep the file, although replacing it needs
    /// only the rights of the folder. May be called from several threads at once.
    [[nodiscard]] std::variant<std::shared_ptr<UnnamedText>, OutputFailure>
    write(const std::string& name, std::string_view content, Present present) const;

    /// Brings all texts to the disk that were written so far. False if it fails, or if the file system is not one that
    /// is known to do that.
    [[nodiscard]] bool syncTogether() const;

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

    explicit OutputFolder(FileDescriptor folder);

    void remember(std::string_view below) const;

    FileDescriptor folder_;
    dev_t device_ = 0;
    bool syncsTogether_ = false;
    std::unique_ptr<Below> below_;
};

} // namespace quillow::cli
