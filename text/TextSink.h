// The buffer that an engine writes its text into. It enforces the rules that hold for the text of every engine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quillow::text {

/// Collects UTF-8. Accepts any code point. The result is well-formed, has no control characters except TAB and LF
/// (and FF with FormFeeds::keep), and does not begin with a byte-order mark.
class TextSink {
public:
    enum class FormFeeds { drop, keep };
    explicit TextSink(FormFeeds formFeeds = FormFeeds::drop)
        : formFeeds_(formFeeds) {}

    void reserve(std::size_t bytes) { out_.reserve(bytes); }

    /// Appends one code point. Control characters (C0, DEL and C1) are dropped as described above, and so is a
    /// U+FEFF at the start of the text. A surrogate or a value over U+10FFFF becomes U+FFFD.
    void append(char32_t codePoint) {
        if (codePoint >= 0x20 && codePoint < 0x7F) {
            out_.push_back(static_cast<char>(codePoint));
        } else {
            appendOther(codePoint);
        }
    }

    /// The same for several code points.
    void append(std::u32string_view codePoints);

    /// Appends bytes as they are. The caller guarantees that they are printable ASCII (0x20..0x7E), TAB or LF.
    void appendAscii(std::string_view ascii) { out_.append(ascii); }
    void appendAscii(char ascii) { out_.push_back(ascii); }

    /// Appends well-formed UTF-8 without the characters that `append` drops.
    void appendUtf8(std::string_view utf8);

    [[nodiscard]] bool empty() const { return out_.empty(); }
    [[nodiscard]] std::size_t size() const { return out_.size(); }
    [[nodiscard]] char back() const { return out_.back(); }
    [[nodiscard]] std::string_view view() const { return out_; }
    void removeSuffix(std::size_t bytes) { out_.resize(out_.size() - bytes); }
    void truncate(std::size_t size) { out_.resize(size); }

    /// Returns the finished text: trailing line ends become exactly one, and a text of only line
    /// ends becomes empty.
    [[nodiscard]] std::string finish() &&;

private:
    void appendOther(char32_t codePoint);

    std::string out_;
    FormFeeds formFeeds_;
};

} // namespace quillow::text
