// The growing buffer of the text. Text is written in blocks, so there is always slack after its end.
#pragma once

#include "engines/rtf/Scanner.h"
#include "text/Unicode.h"
#include "text/Utf8.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace quillow::rtf {

class Output {
public:
    /// `source` must outlive the object. Its position serves to estimate the size of the text when the buffer must
    /// grow.
    explicit Output(const Scanner& source)
        : source_(source) {
        grow(0);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(cursor_ - begin_); }
    [[nodiscard]] bool empty() const { return cursor_ == begin_; }
    [[nodiscard]] char back() const { return cursor_[-1]; }
    [[nodiscard]] bool atLineStart() const { return empty() || back() == '\n'; }
    [[nodiscard]] std::string_view view(std::size_t from = 0) const { return {begin_ + from, size() - from}; }

    void truncate(std::size_t size) { cursor_ = begin_ + size; }
    /// Removes the text from offset `from` on and returns it.
    [[nodiscard]] std::string cut(std::size_t from);
    /// Moves the whole text out. Nothing may be written afterwards.
    [[nodiscard]] std::string take();

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
    /// A code point that is not a control character; surrogates and values over U+10FFFF are written as U+FFFD.
    void appendCodePoint(char32_t c);

    /// Copies the plain text at the start of [p, end) and returns where it stops. Scan and copy are one pass.
    [[nodiscard]] const char* copyText(const char* p, const char* end);

    void ensureLineStart() {
        if (!atLineStart()) append('\n');
    }

private:
    static constexpr std::size_t kInitialCapacity = 0x4000;
    static constexpr std::size_t kStep = 0x700; // filled with zeros, and still in the L1 cache when text is written
    static constexpr std::size_t kSlack = 64;   // bytes that an append may write without a check

    void makeRoom() {
        if (cursor_ >= limit_) grow(0);
    }
    void grow(std::size_t atLeast);
    [[nodiscard]] std::size_t expectedSize() const;

    const Scanner& source_;
    std::string buffer_; // longer than the text, which ends at cursor_
    char* begin_ = nullptr;
    char* cursor_ = nullptr;
    char* limit_ = nullptr; // kSlack bytes before the buffer's end
};

inline const char* Output::copyText(const char* p, const char* end) {
#if defined(__SSE2__)
    constexpr std::size_t kStride = 4 * text::kBlock;
    static_assert(kStride <= kSlack);
    while (static_cast<std::size_t>(end - p) >= kStride) {
        char* const to = cursor_;
        std::size_t length = 0;
        unsigned unusual = 0;
        do {
            const __m128i block = text::loadBlock(p + length);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + length), block);
            unusual = unusualText(block);
            if (unusual != 0) break;
            length += text::kBlock;
        } while (length != kStride);
        if (unusual != 0) length += lowestBit(unusual);
        p += length;
        cursor_ = to + length;
        makeRoom();
        if (unusual == 0) continue;
        if ((*p | 2) != '~') return p;
        append(*p++); // '|' or '~'
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
    } else if (c < text::kFirstSupplementary && !text::isSurrogate(c)) {
        appendPacked(0x8080E0U | (c >> 12) | (c >> 6 & 0x3F) << 8 | (c & 0x3F) << 16, 3);
    } else if (c >= text::kFirstSupplementary && c <= text::kLastCodePoint) {
        appendPacked(0x808080F0U | (c >> 18) | (c >> 12 & 0x3F) << 8 | (c >> 6 & 0x3F) << 16 | (c & 0x3F) << 24, 4);
    } else {
        appendCodePoint(text::kReplacementCharacter);
    }
}

} // namespace quillow::rtf
