// The growing buffer that the text is written into. It is written in blocks, so it always has slack behind its end.
#pragma once

#include "engines/rtf/RtfBytes.h"
#include "text/Utf8.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace quillow::rtf {

class Output {
public:
    Output() { grow(kInitialCapacity); }
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(cursor_ - begin_); }
    [[nodiscard]] bool empty() const { return cursor_ == begin_; }
    [[nodiscard]] char back() const { return cursor_[-1]; }
    [[nodiscard]] bool atLineStart() const { return empty() || back() == '\n'; }
    [[nodiscard]] std::string_view view(std::size_t from = 0) const { return {begin_ + from, size() - from}; }

    void truncate(std::size_t size) { cursor_ = begin_ + size; }
    /// Takes everything from `from` on out of the buffer.
    [[nodiscard]] std::string cut(std::size_t from);

    /// Printable ASCII, TAB, LF or FF.
    void append(char c) {
        *cursor_++ = c;
        makeRoom();
    }
    /// Well-formed UTF-8 without control characters.
    void append(std::string_view utf8);
    /// The first `length` bytes of a little-endian word, at most four.
    void appendPacked(std::uint32_t utf8, std::size_t length) {
        std::memcpy(cursor_, &utf8, sizeof utf8);
        cursor_ += length;
        makeRoom();
    }
    /// A code point that is no control character; surrogates and values over U+10FFFF are written as U+FFFD.
    void appendCodePoint(char32_t c);

    /// Copies the plain text at the start of [p, end) and returns where it stops. Scan and copy are one pass.
    [[nodiscard]] const char* copyText(const char* p, const char* end);

    void ensureLineStart() {
        if (!atLineStart()) append('\n');
    }

private:
    static constexpr std::size_t kInitialCapacity = 0x4000;
    static constexpr std::size_t kSlack = 64; // what a single append may write without asking

    void makeRoom() {
        if (cursor_ >= limit_) grow(0);
    }
    void grow(std::size_t atLeast);

    char* begin_ = nullptr;
    char* cursor_ = nullptr;
    char* limit_ = nullptr; // kSlack bytes before the end of what is allocated
};

inline const char* Output::copyText(const char* p, const char* end) {
#if defined(__SSE2__)
    constexpr std::size_t kBlocks = 4;
    static_assert(kBlocks * kBlock <= kSlack);
    while (static_cast<std::size_t>(end - p) >= kBlocks * kBlock) {
        for (std::size_t i = 0; i < kBlocks; ++i) {
            const __m128i block = loadBlock(p + i * kBlock);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(cursor_ + i * kBlock), block);
            if (const unsigned mask = notPlainText(block)) {
                const std::size_t length = i * kBlock + lowestBit(mask);
                cursor_ += length;
                makeRoom();
                return p + length;
            }
        }
        p += kBlocks * kBlock;
        cursor_ += kBlocks * kBlock;
        makeRoom();
    }
#endif
    while (p != end && isPlainText(*p))
        append(*p++);
    return p;
}

inline void Output::appendCodePoint(char32_t c) {
    if (c < 0x80) {
        append(static_cast<char>(c));
    } else if (c < 0x800) {
        appendPacked(0x80C0U | (c >> 6) | (c & 0x3F) << 8, 2);
    } else if (c < 0x10000 && (c < 0xD800 || c > 0xDFFF)) {
        appendPacked(0x8080E0U | (c >> 12) | (c >> 6 & 0x3F) << 8 | (c & 0x3F) << 16, 3);
    } else if (c >= 0x10000 && c <= 0x10FFFF) {
        appendPacked(0x808080F0U | (c >> 18) | (c >> 12 & 0x3F) << 8 | (c >> 6 & 0x3F) << 16 | (c & 0x3F) << 24, 4);
    } else {
        appendCodePoint(text::kReplacementCharacter);
    }
}

} // namespace quillow::rtf
