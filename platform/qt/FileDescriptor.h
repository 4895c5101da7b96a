// An owned POSIX file descriptor.
#pragma once

#include <unistd.h>

#include <utility>

namespace quillow {

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
    /// Gives the descriptor away.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }
    /// False when the system reports a late write error.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_ = -1;
};

} // namespace quillow
