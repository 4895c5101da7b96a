// The lexical layer of RTF (RTF 1.9.1, "Basic Entities"): control words and symbols, hexadecimal bytes, binary
// data, and the end of a group. It does not interpret them.
#pragma once

#include "engines/rtf/Bytes.h"
#include "engines/rtf/Keywords.h"
#include "text/Ascii.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::text {
class CodePage;
}

namespace quillow::rtf {

/// A control word with its parameter, delimiter consumed.
struct ControlWord {
    Keyword keyword;
    std::int32_t parameter = 0; ///< 0 if the word has none; clamped to 32 bits
    bool hasParameter = false;

    [[nodiscard]] Action action() const { return keyword.action; }
    /// For toggles such as \v, which only \v0 switches off.
    [[nodiscard]] bool isOn() const { return !hasParameter || parameter != 0; }
};

/// A token of a group that is read for its data, not for its text.
struct Token {
    enum class Kind : std::uint8_t { end, open, close, word, symbol, byte };
    Kind kind = Kind::end;
    char byte = 0; ///< symbol: its character; byte (raw or \'hh): its value
    ControlWord word;
};

class Scanner {
public:
    explicit Scanner(std::string_view input)
        : begin_(input.data())
        , p_(input.data())
        , end_(input.data() + input.size()) {}

    [[nodiscard]] bool atEnd() const { return p_ == end_; }
    [[nodiscard]] const char* position() const { return p_; }
    [[nodiscard]] const char* end() const { return end_; }
    [[nodiscard]] std::string_view input() const { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }
    [[nodiscard]] std::string_view rest() const { return {p_, remaining()}; }
    [[nodiscard]] std::size_t remaining() const { return static_cast<std::size_t>(end_ - p_); }
    void moveTo(const char* p) { p_ = p; }
    void moveToEnd() { p_ = end_; }

    [[nodiscard]] char current() const { return *p_; }
    void advance() { ++p_; }
    /// The byte `offset` further on, or NUL past the end.
    [[nodiscard]] char peek(std::size_t offset) const { return offset < remaining() ? p_[offset] : '\0'; }

    /// Carriage returns and line feeds in the source have no meaning.
    void skipLineEnds() {
        while (p_ != end_ && text::isLineEnd(*p_))
            ++p_;
    }

    /// True at a backslash that begins a control word.
    [[nodiscard]] bool atWord() const { return remaining() >= 2 && *p_ == '\\' && text::isLetter(p_[1]); }

    /// Reads the name of the control word at the current backslash, up to its parameter. If no letter follows the
    /// backslash, nothing is consumed and the action is Action::notAWord.
    [[nodiscard]] Keyword readName();

    /// Reads the parameter and the delimiting blank after a name.
    [[nodiscard]] ControlWord readParameter(Keyword keyword);
    /// Skips the parameter and the delimiting blank.
    void skipParameter();

    /// Reads a name and its parameter.
    [[nodiscard]] ControlWord readWord() { return readParameter(readName()); }

    /// The value of the \'hh at `p`; std::nullopt if there is no valid \'hh.
    [[nodiscard]] std::optional<std::uint8_t> hexByteAt(const char* p) const {
        if (end_ - p < 4 || p[0] != '\\' || p[1] != '\'') return std::nullopt;
        const int high = text::hexValue(p[2]);
        const int low = text::hexValue(p[3]);
        if ((high | low) < 0) return std::nullopt;
        return static_cast<std::uint8_t>(high << 4 | low);
    }

    enum class Completeness { whole, cutShort };

    /// Skips the data of \bin. Stops at the end of the input if `length` goes beyond it.
    Completeness skipBinary(std::int32_t length);

    /// Skips the rest of the current group and its closing brace. Counts braces and respects escapes and binary data.
    /// `rawPairs` is the double-byte code page of the raw bytes, or nullptr: its trail bytes may look like braces or
    /// backslashes.
    Completeness skipGroup(const text::CodePage* rawPairs);

    /// The next token of a group that is read for its data. Skips line ends, and \bin with its data.
    [[nodiscard]] Token nextToken();

private:
    [[nodiscard]] Keyword readNameSlowly();

    const char* begin_;
    const char* p_;
    const char* end_;
};

inline Keyword Scanner::readName() {
#if defined(__SSE2__)
    if (remaining() > text::kBlock) {
        // The mask of the first n bytes of a block begins n bytes before the middle of this array.
        alignas(16) static constexpr std::uint8_t kMasks[2 * text::kBlock] = {
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
        const __m128i block = text::loadBlock(p_ + 1);
        const std::size_t length = leadingLetters(block);
        if (length == 0) return {Action::notAWord, 0};
        if (length < text::kBlock) {
            const __m128i mask = text::loadBlock(reinterpret_cast<const char*>(kMasks) + text::kBlock - length);
            const __m128i name = _mm_and_si128(block, mask);
            const auto low = static_cast<std::uint64_t>(_mm_cvtsi128_si64(name));
            const auto high = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(name, name)));
            p_ += 1 + length;
            return findKeyword(low, high);
        }
    }
#endif
    return readNameSlowly();
}

inline void Scanner::skipParameter() {
    const char* p = p_;
    if (p == end_) return;
    if (*p == '-') {
        if (end_ - p < 2 || !text::isDigit(p[1])) return;
        ++p;
    }
    while (p != end_ && text::isDigit(*p))
        ++p;
    if (p != end_ && *p == ' ') ++p;
    p_ = p;
}

inline ControlWord Scanner::readParameter(Keyword keyword) {
    ControlWord word{keyword};
    const char* p = p_;
    const bool isNegative = end_ - p >= 2 && *p == '-' && text::isDigit(p[1]);
    if (isNegative) ++p;
    if (p != end_ && text::isDigit(*p)) {
        constexpr std::int64_t kLimit = INT32_MAX;
        std::int64_t value = 0;
        do {
            value = value * 10 + (*p - '0');
            if (value > kLimit) value = kLimit;
            ++p;
        } while (p != end_ && text::isDigit(*p));
        word.parameter = static_cast<std::int32_t>(isNegative ? -value : value);
        word.hasParameter = true;
    }
    if (p != end_ && *p == ' ') ++p;
    p_ = p;
    return word;
}

} // namespace quillow::rtf
