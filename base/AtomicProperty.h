// A field that several threads may read and write. Each read gets the whole value of one write.
#pragma once

#include <mutex>
#include <utility>

namespace quillow {

template <class T>
class AtomicProperty { // selector: none
public:
    [[nodiscard]] T get() const {
        const std::lock_guard lock(mutex_);
        return value_;
    }
    void set(T value) {
        const std::lock_guard lock(mutex_);
        std::swap(value_, value); // the old value is destroyed after the lock is released
    }

private:
    mutable std::mutex mutex_;
    T value_{};
};

} // namespace quillow
