// The output of the Encoding Standard's decoders: UTF-8, collected in a small buffer before it goes to the text.
#pragma once

#include "text/Encoding.h"
#include "text/Utf8.h"

#include <cstring>

namespace quillow::text {

class DecoderOutput {
public:
    explicit DecoderOutput(DecodedText& text)
        : text_(text) {}
    ~DecoderOutput() { flush(); }
    DecoderOutput(const DecoderOutput&) = delete;
    DecoderOutput& operator=(const DecoderOutput&) = delete;

    /// Appends a scalar value.
    void put(char32_t c) {
        if (used_ > sizeof buffer_ - kLongestSequence) flush();
        if (c < 0x80) {
            putByte(c);
        } else if (c < 0x800) {
            putByte(0xC0 | (c >> 6));
            putByte(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            putByte(0xE0 | (c >> 12));
            putByte(0x80 | ((c >> 6) & 0x3F));
            putByte(0x80 | (c & 0x3F));
        } else {
            putByte(0xF0 | (c >> 18));
            putByte(0x80 | ((c >> 12) & 0x3F));
            putByte(0x80 | ((c >> 6) & 0x3F));
            putByte(0x80 | (c & 0x3F));
        }
    }

    /// The standard's "error" in replacement mode.
    void putError() {
        put(kReplacementCharacter);
        ++text_.replacements;
    }

    void putUtf8(std::string_view utf8) {
        if (utf8.empty()) return; // its data may be a null pointer
        if (utf8.size() > sizeof buffer_ - used_) flush();
        if (utf8.size() > sizeof buffer_) {
            text_.utf8.append(utf8);
        } else {
            std::memcpy(buffer_ + used_, utf8.data(), utf8.size());
            used_ += utf8.size();
        }
    }

    /// Returns room for `bytes` bytes, at most kMostRoom. The caller then passes the number of bytes that it has
    /// written to `commit`.
    char* room(std::size_t bytes) {
        if (bytes > sizeof buffer_ - used_) flush();
        return buffer_ + used_;
    }
    void commit(std::size_t bytes, std::size_t errors) {
        used_ += bytes;
        text_.replacements += errors;
    }
    static constexpr std::size_t kMostRoom = 4096;

private:
    static constexpr std::size_t kLongestSequence = 4;

    void putByte(char32_t byte) { buffer_[used_++] = static_cast<char>(byte); }

    void flush() {
        text_.utf8.append(buffer_, used_);
        used_ = 0;
    }

    DecodedText& text_;
    std::size_t used_ = 0;
    char buffer_[kMostRoom];
};

} // namespace quillow::text
