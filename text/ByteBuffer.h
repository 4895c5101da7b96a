// A buffer for decoded bytes that is used again for one stream after another.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

namespace quillow::text {

/// Bytes that grow without being set to zero first. `clear` keeps the memory. Throws std::bad_alloc.
class ByteBuffer {
public:
    [[nodiscard]] char* data() { return data_.get(); }
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] std::size_t capacity() const { return capacity_; }
    [[nodiscard]] std::string_view view() const { return {data_.get(), size_}; }

    void clear() { size_ = 0; }

    /// Makes room for `capacity` bytes in all. Keeps the contents.
    void reserve(std::size_t capacity) {
        if (capacity <= capacity_) return;
        void* const grown = std::realloc(data_.get(), capacity);
        if (grown == nullptr) throw std::bad_alloc();
        (void)data_.release();
        data_.reset(static_cast<char*>(grown));
        capacity_ = capacity;
    }

    /// Sets the size. New bytes have no defined value.
    void resize(std::size_t size) {
        if (size > capacity_) reserve(size + size / 2);
        size_ = size;
    }

    void append(std::string_view bytes) {
        if (bytes.empty()) return;
        const std::size_t at = size_;
        resize(size_ + bytes.size());
        std::memcpy(data_.get() + at, bytes.data(), bytes.size());
    }

    void append(char byte) {
        resize(size_ + 1);
        data_.get()[size_ - 1] = byte;
    }

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };
    std::unique_ptr<char, Free> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace quillow::text
