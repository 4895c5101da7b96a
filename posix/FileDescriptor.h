// An open file that closes itself, and calls on it that are repeated until they are done.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace quillow {

/// Owns a POSIX file descriptor.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number)
        : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            close();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }
    ~FileDescriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }
    /// Returns the descriptor, which the caller then owns.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }
    /// False if the system reports a late write error.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_ = -1;
};

/// The system's message for `errno`.
[[nodiscard]] inline std::string lastError() {
    return std::generic_category().message(errno);
}

/// Writes all bytes. Returns false, with `errno` set, if the file takes no more.
[[nodiscard]] inline bool writeAll(int number, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(number, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace quillow
