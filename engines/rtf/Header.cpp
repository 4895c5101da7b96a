#include "engines/rtf/Header.h"

#include "engines/rtf/Bytes.h"
#include "engines/rtf/Fragment.h"
#include "text/Ascii.h"
#include "text/Unicode.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cstdint>

namespace quillow::rtf {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kPdfHeader = "%PDF-";
constexpr std::string_view kBlanks = " \t\r\n\f\0"sv;

/// The message for text that begins like an HTML page or an XML document; empty for other text.
std::string_view markupDetail(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    if (text::startsWithIgnoringCase(text, "<!doctype html") || text::startsWithIgnoringCase(text, "<html"))
        return "the content is an HTML page";
    if (text::startsWithIgnoringCase(text, "<?xml")) return "the content is an XML document";
    return {};
}

/// Text has hardly any control characters. A NUL, or more than one control in kTextPerControl of the first kWindow
/// bytes, means binary.
bool isBinary(std::string_view bytes) {
    constexpr std::size_t kWindow = 4096;
    constexpr std::size_t kTextPerControl = 16;
    bytes = bytes.substr(0, kWindow);
    std::size_t controls = 0;
    for (const char c : bytes) {
        if (c == '\0') return true;
        const bool isControl =
            static_cast<std::uint8_t>(c) < 0x20 && c != '\t' && !text::isLineEnd(c) && c != '\f' && c != '\x1B';
        controls += isControl ? 1 : 0;
    }
    return controls * kTextPerControl > bytes.size();
}

enum class ByteOrder { little, big };

std::string transcodeUtf16(std::string_view bytes, ByteOrder order) {
    std::string utf8;
    utf8.reserve(bytes.size() / 2 + 16);
    const auto unitAt = [&](std::size_t i) -> char32_t {
        const auto first = static_cast<std::uint8_t>(bytes[i]);
        const auto second = static_cast<std::uint8_t>(bytes[i + 1]);
        return static_cast<char32_t>(order == ByteOrder::little ? first | second << 8 : first << 8 | second);
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = unitAt(i);
        if (text::isHighSurrogate(c) && i + 3 < bytes.size()) {
            const char32_t low = unitAt(i + 2);
            if (text::isLowSurrogate(low)) {
                c = text::combineSurrogates(c, low);
                i += 2;
            }
        }
        text::appendUtf8(utf8, c);
    }
    return utf8;
}

} // namespace

std::size_t findRtfGroup(std::string_view bytes, std::size_t from) {
    constexpr std::string_view kWord = "\\rtf";
    for (std::size_t at = bytes.find(kWord, from); at != std::string_view::npos; at = bytes.find(kWord, at + 1)) {
        const std::size_t after = at + kWord.size();
        if (after < bytes.size() && text::isLetter(bytes[after])) continue;
        std::size_t brace = at;
        while (brace > from && (text::isLineEnd(bytes[brace - 1]) || bytes[brace - 1] == ' '))
            --brace;
        if (brace > from && bytes[brace - 1] == '{') return brace - 1;
    }
    return std::string_view::npos;
}

void findDocument(std::string_view file, Source& source) {
    // UTF-16 is recognised by its byte-order mark, or by the NULs between the characters of "{\".
    if (file.substr(0, 2) == "\xFF\xFE"sv || file.substr(0, 4) == "{\0\\\0"sv) {
        source.transcoded = transcodeUtf16(file, ByteOrder::little);
    } else if (file.substr(0, 2) == "\xFE\xFF"sv || file.substr(0, 4) == "\0{\0\\"sv) {
        source.transcoded = transcodeUtf16(file, ByteOrder::big);
    }
    source.isUtf8 = !source.transcoded.empty();
    if (source.isUtf8) file = source.transcoded;
    if (file.substr(0, 3) == "\xEF\xBB\xBF"sv) file.remove_prefix(3);

    if (file.substr(0, kPdfHeader.size()) == kPdfHeader) {
        source.kind = Source::Kind::other;
        source.detail = "the content is a PDF";
        return;
    }
    source.bytes = file;
    const std::string_view markup = markupDetail(file);
    const std::size_t first = std::min(file.find_first_not_of(kBlanks), file.size());
    const std::size_t start = markup.empty() ? findRtfGroup(file, 0) : std::string_view::npos;
    // Text may come before the document, such as a mail header. A document inside a binary file does not count.
    if (start != std::string_view::npos && !isBinary(file.substr(first, start - first))) {
        source.kind = Source::Kind::rtf;
        source.bytes.remove_prefix(start);
        return;
    }
    if (file.substr(first, 4) == "\\rtf") {
        source.kind = Source::Kind::rtf;
        source.lostOpening = true;
        source.bytes.remove_prefix(first);
        return;
    }
    if (!markup.empty() || isBinary(file)) {
        source.kind = Source::Kind::other;
        source.detail = markup.empty() ? "the content is binary" : markup;
    } else if (beginsLikeBody(file)) {
        source.kind = Source::Kind::rtf;
        source.isFragment = true;
        source.bytes.remove_prefix(first);
    }
}

} // namespace quillow::rtf
