#include "engines/rtf/Output.h"

#include <algorithm>
#include <utility>

namespace quillow::rtf {

/// An estimate of the final size of the text. Each byte still to read counts as one byte of text, or as many as
/// the bytes read so far gave on average, but at most three: the UTF-8 of a code page's byte has up to three
/// bytes.
std::size_t Output::expectedSize() const {
    constexpr std::uint64_t kMostPerByte = 3;
    const std::uint64_t used = size();
    const std::uint64_t left = source_.remaining();
    const std::uint64_t read = source_.input().size() - left;
    if (read == 0) return 0;
    const std::uint64_t rest = std::clamp(used * left / read, left, left * kMostPerByte);
    return static_cast<std::size_t>(used + rest + rest / 16);
}

/// Memory is reserved in one step but filled in small ones: pages without text are never touched, and a growing text is
/// rarely copied.
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
