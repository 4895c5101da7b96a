#include "engines/rtf/Output.h"

#include <algorithm>
#include <utility>

namespace quillow::rtf {

/// What the buffer will hold in the end if each byte to come gives a byte of text, or more where those read so far gave more:
/// up to three, which a byte of a code page takes in UTF-8.
std::size_t Output::expectedSize() const {
    constexpr std::uint64_t kMostPerByte = 3;
    const std::uint64_t used = size();
    const std::uint64_t left = source_.remaining();
    const std::uint64_t read = source_.input().size() - left;
    if (read == 0) return 0;
    const std::uint64_t rest = std::clamp(used * left / read, left, left * kMostPerByte);
    return static_cast<std::size_t>(used + rest + rest / 16);
}

/// Memory is asked for at once, but filled step by step: pages that no text comes to are never touched, and a growing text is
/// hardly ever copied.
void Output::grow(std::size_t atLeast) {
    const std::size_t used = size();
    const std::size_t wanted = used + atLeast + kStep;
    if (wanted > buffer_.capacity())
        buffer_.reserve(std::max({kInitialCapacity, wanted, 2 * used, expectedSize() + kStep}));
    buffer_.resize(std::max(wanted, buffer_.size()));
    begin_ = buffer_.data();
    cursor_ = begin_ + used;
    limit_ = begin_ + buffer_.size() - kSlack;
}

void Output::append(std::string_view utf8) {
    if (static_cast<std::size_t>(limit_ - cursor_) < utf8.size()) grow(utf8.size());
    if (!utf8.empty()) std::memcpy(cursor_, utf8.data(), utf8.size());
    cursor_ += utf8.size();
    makeRoom();
}

std::string Output::cut(std::size_t from) {
    std::string taken(view(from));
    truncate(from);
    return taken;
}

std::string Output::take() {
    buffer_.resize(size());
    return std::move(buffer_);
}

} // namespace quillow::rtf
