// An open file that closes itself, and the calls on it that are repeated until they are done.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace quillow::cli {

class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number)
        : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor() {
        if (number_ >= 0) ::close(number_);
    }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

private:
    int number_ = -1;
};

/// What the system says about the last call's failure.
[[nodiscard]] inline std::string lastError() {
    return std::generic_category().message(errno);
}

/// Writes all of it; false, with errno set, when the file takes no more.
[[nodiscard]] inline bool writeAll(int number, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(number, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace quillow::cli
