// A file's bytes mapped into memory instead of read: nothing is copied, and no page of memory is filled.
#pragma once

#include "posix/FileDescriptor.h"

#include <sys/stat.h>

#include <cstddef>
#include <optional>
#include <span>

namespace quillow::cli {

/// Other programs may change the file while it is mapped, and the bytes then change under their reader: only what stays in
/// bounds whatever it reads may be given them. Where the file was cut short, or its disk fails, zeros are read instead of the
/// missing bytes.
class MappedFile {
public:
    /// Maps an open file of that status, which must hold something, and takes it over. Nothing, and the file stays with the
    /// caller, where the system does not map it or kMostMappings are in use.
    [[nodiscard]] static std::optional<MappedFile> map(FileDescriptor& file, const struct stat& status);

    MappedFile(MappedFile&& other) noexcept;
    MappedFile& operator=(MappedFile&& other) noexcept;
    ~MappedFile();

    [[nodiscard]] std::span<const std::byte> view() const { return {begin_, size_}; }
    /// True once the file is no more what it was when it was mapped, or some of it could not be read.
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
