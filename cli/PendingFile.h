// A file that is being written, and gets its name when it is whole.
#pragma once

#include "posix/FileDescriptor.h"

#include <sys/stat.h>

#include <string>
#include <string_view>
#include <utility>

namespace quillow::cli {

/// What happens to a file that has the name already.
enum class Present { replaced, kept };

/// Until place() the file has no name if the file system supports that, so that even a killed program leaves nothing.
/// Otherwise, and for the moment in which it replaces another file, it has a temporary name in the folder and a lock
/// (flock): a temporary file without a lock belongs to a program that was killed.
class PendingFile {
public:
    /// `folder` is a descriptor that stays open as long as the object lives.
    explicit PendingFile(int folder);
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;
    ~PendingFile();

    /// The following return false on an error, with `errno` set.
    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }
    [[nodiscard]] bool write(std::string_view content) const;
    [[nodiscard]] bool sync() const;
    /// After a sync of the whole file system: whether it wrote this file's bytes.
    [[nodiscard]] bool hasReachedDisk() const;
    /// The file's device; 0 if the system does not say.
    [[nodiscard]] dev_t device() const;
    /// Copies the mode and, if the system allows it, the owner and group of the file to be replaced.
    [[nodiscard]] bool takeOver(const struct stat& replaced) const;
    /// Gives the file its name in the folder.
    [[nodiscard]] bool place(const std::string& name, Present present);
    /// The open file, which the caller then owns. Call it last.
    [[nodiscard]] FileDescriptor takeFile() { return std::move(file_); }

    /// Removes the temporary files of all objects and blocks those that are being written. Call it just before the
    /// program ends.
    static void abandonAll();
    /// Removes the temporary files that killed programs left in the folder.
    static void removeLeftOver(int folder);

private:
    [[nodiscard]] bool openNamed();
    [[nodiscard]] bool linkTemporarily();
    [[nodiscard]] bool link(const std::string& name) const;

    int folder_;
    FileDescriptor file_;
    std::string name_; ///< the temporary one; empty while there is none
};

} // namespace quillow::cli
