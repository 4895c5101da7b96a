// Maps a file into memory instead of reading it, so that its bytes are not copied.
#pragma once

#include "posix/FileDescriptor.h"

#include <sys/stat.h>

#include <cstddef>
#include <optional>
#include <span>

namespace quillow::cli {

/// Other programs may change the file while it is mapped, and its bytes then change too. Pass them only to code that
/// stays in bounds whatever it reads. If the file becomes shorter or its disk fails, zeros replace the missing bytes.
class MappedFile {
public:
    /// Maps an open file that is not empty, and takes ownership of it; `status` is its status. Returns std::nullopt
    /// and leaves the file to the caller if the system does not map it or kMostMappings are in use.
    [[nodiscard]] static std::optional<MappedFile> map(FileDescriptor& file, const struct stat& status);

    MappedFile(MappedFile&& other) noexcept;
    MappedFile& operator=(MappedFile&& other) noexcept;
    ~MappedFile();

    [[nodiscard]] std::span<const std::byte> view() const { return {begin_, size_}; }
    /// The descriptor, open for reading only.
    [[nodiscard]] int descriptor() const { return file_.number(); }
    /// True if the file has changed since it was mapped, or if a part of it could not be read.
    [[nodiscard]] bool hasChanged() const;

    static constexpr std::size_t kMostMappings = 256;

private:
    MappedFile(FileDescriptor file, const struct stat& status, std::byte* begin, std::size_t slot);

    FileDescriptor file_;
    timespec modified_ = {};
    std::byte* begin_ = nullptr;
    std::size_t size_ = 0;
    std::size_t slot_ = 0;
};

} // namespace quillow::cli
