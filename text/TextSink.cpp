#include "text/TextSink.h"

#include "text/Utf8.h"

namespace quillow::text {

namespace {

bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F);
}

constexpr char32_t kByteOrderMark = 0xFEFF;

} // namespace

void TextSink::append(char32_t c) {
    if (c >= 0x20 && c < 0x7F) {
        out_.push_back(static_cast<char>(c));
        return;
    }
    if (isControl(c) && c != '\t' && c != '\n' && !(c == '\f' && formFeeds_ == FormFeeds::keep)) return;
    if (c == kByteOrderMark && out_.empty()) return;
    text::appendUtf8(out_, c);
}

void TextSink::appendUtf8(std::string_view utf8) {
    while (!utf8.empty()) {
        std::size_t plain = 0;
        while (plain < utf8.size() && utf8[plain] >= 0x20 && utf8[plain] < 0x7F)
            ++plain;
        out_.append(utf8.substr(0, plain));
        utf8.remove_prefix(plain);
        if (utf8.empty()) break;
        const DecodedCodePoint decoded = decodeUtf8(utf8);
        append(decoded.codePoint);
        utf8.remove_prefix(decoded.length);
    }
}

std::string TextSink::finish() && {
    std::size_t end = out_.size();
    while (end > 0 && out_[end - 1] == '\n')
        --end;
    out_.resize(end);
    if (!out_.empty()) out_.push_back('\n');
    return std::move(out_);
}

} // namespace quillow::text
