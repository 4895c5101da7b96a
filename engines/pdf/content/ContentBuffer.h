// The bytes of a content stream with a guard behind them, so that the scanner need not compare each byte's place with
// the end.
#pragma once

#include "text/ByteBuffer.h"

#include <string_view>

namespace quillow::pdf {

class ContentBuffer {
public:
    /// Ends every number, name and operator, then every string. The scanner recognises the brackets by their place. The
    /// rest is for those who read a block of sixteen bytes from any place up to a bracket.
    static constexpr std::string_view kGuard = "\n>)                 ";

    void clear() { bytes_.clear(); }

    /// Appends the bytes of a stream that is part of the content. A token ends with its stream (ISO 32000-2, 7.8.2).
    void append(std::string_view bytes) {
        bytes_.append(bytes);
        bytes_.append('\n');
    }

    /// For a function that clears a buffer and fills it. `adopt` must follow.
    [[nodiscard]] text::ByteBuffer& raw() { return bytes_; }
    /// `bytes` is the whole content: a view of `raw()`, or of other memory and then copied.
    void adopt(std::string_view bytes) {
        if (bytes.data() != bytes_.data()) {
            bytes_.clear();
            bytes_.append(bytes);
        } else {
            bytes_.resize(bytes.size());
        }
    }

    /// The content, followed by the guard in memory. Valid until the buffer changes.
    [[nodiscard]] std::string_view guarded() {
        const std::size_t size = bytes_.size();
        bytes_.append(kGuard);
        bytes_.resize(size);
        return {bytes_.data(), size};
    }

    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] std::size_t capacity() const { return bytes_.capacity(); }
    void release() { bytes_ = {}; }

private:
    text::ByteBuffer bytes_;
};

} // namespace quillow::pdf
