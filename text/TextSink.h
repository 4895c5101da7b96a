// The growing buffer that an engine writes its text into, and the rules that every engine's text keeps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quillow::text {

/// Collects UTF-8. What goes in may be any code point; what comes out holds no control characters but TAB and LF (and FF
/// when asked for), never NUL, does not begin with a byte-order mark, and is always well-formed.
class TextSink {
public:
    enum class FormFeeds { drop, keep };
    explicit TextSink(FormFeeds formFeeds = FormFeeds::drop)
        : formFeeds_(formFeeds) {}

    void reserve(std::size_t bytes) { out_.reserve(bytes); }

    /// Appends one code point by the rules above: a control character is dropped (C0, DEL and C1), so is a
    /// U+FEFF that would begin the text; a surrogate or a value over U+10FFFF becomes U+FFFD.
    void append(char32_t codePoint) {
        if (codePoint >= 0x20 && codePoint < 0x7F) {
            out_.push_back(static_cast<char>(codePoint));
        } else {
            appendOther(codePoint);
        }
    }

    /// Appends printable ASCII (0x20..0x7E, TAB, LF) that the caller vouches for, as it is.
    void appendAscii(std::string_view ascii) { out_.append(ascii); }
    void appendAscii(char ascii) { out_.push_back(ascii); }

    /// Appends well-formed UTF-8, dropping what the rules drop.
    void appendUtf8(std::string_view utf8);

    [[nodiscard]] bool empty() const { return out_.empty(); }
    [[nodiscard]] std::size_t size() const { return out_.size(); }
    [[nodiscard]] char back() const { return out_.back(); }
    [[nodiscard]] std::string_view view() const { return out_; }
    void removeSuffix(std::size_t bytes) { out_.resize(out_.size() - bytes); }
    void truncate(std::size_t size) { out_.resize(size); }

    /// The finished text: trailing line ends become exactly one; a text of nothing but line ends becomes the empty text.
    [[nodiscard]] std::string finish() &&;

private:
    void appendOther(char32_t codePoint);

    std::string out_;
    FormFeeds formFeeds_;
};

} // namespace quillow::text
