#include "engines/rtf/Header.h"

#include "engines/rtf/Bytes.h"
#include "engines/rtf/Fragment.h"
#include "text/Ascii.h"
#include "text/Encoding.h"

#include <algorithm>

namespace quillow::rtf {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kBlanks = " \t\r\n\f\0"sv;

std::string transcoded(std::string_view bytes, text::Encoding encoding) {
    // Half a code unit at the end of a truncated file is not a character.
    return text::decode(bytes.substr(0, bytes.size() & ~std::size_t{1}), encoding).utf8;
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
        source.transcoded = transcoded(file, text::Encoding::utf16le);
    } else if (file.substr(0, 2) == "\xFE\xFF"sv || file.substr(0, 4) == "\0{\0\\"sv) {
        source.transcoded = transcoded(file, text::Encoding::utf16be);
    }
    source.isUtf8 = !source.transcoded.empty();
    if (source.isUtf8) file = source.transcoded;
    if (file.substr(0, 3) == "\xEF\xBB\xBF"sv) file.remove_prefix(3);

    source.bytes = file;
    const std::size_t first = std::min(file.find_first_not_of(kBlanks), file.size());
    // Text may come before the document, such as a mail header.
    const std::size_t start = findRtfGroup(file, 0);
    if (start != std::string_view::npos) {
        source.isRtf = true;
        source.bytes.remove_prefix(start);
    } else if (file.substr(first, 4) == "\\rtf") {
        source.isRtf = true;
        source.lostOpening = true;
        source.bytes.remove_prefix(first);
    } else if (beginsLikeBody(file)) {
        source.isRtf = true;
        source.isFragment = true;
        source.bytes.remove_prefix(first);
    }
}

} // namespace quillow::rtf
