#include "engines/html/ContentSniffer.h"

#include "engines/html/parser/EncodingSniffer.h"
#include "text/Ascii.h"
#include "text/ByteScan.h"

namespace quillow::html {

namespace {

struct Signature {
    std::string_view bytes;
    std::string_view what;
};

constexpr Signature kSignatures[] = {
    {"%PDF-", "a PDF"},
    {"{\\rtf", "RTF"},
    {"PK\x03\x04", "a ZIP archive"},
    {"\x1F\x8B\x08", "compressed data"},
    {"7z\xBC\xAF", "an archive"},
    {"Rar!\x1A", "an archive"},
    {"\xD0\xCF\x11\xE0", "a compound document"},
    {"\x89PNG", "a picture"},
    {"\xFF\xD8\xFF", "a picture"},
    {"GIF87a", "a picture"},
    {"GIF89a", "a picture"},
    {"\x7F"
     "ELF",
     "a program"},
    {"bplist0", "a property list"},
};

constexpr std::size_t kLookedAt = 4096;
/// A few stray control characters are damage. If more than one byte in ten is one, the content is not text.
constexpr std::size_t kBinaryShare = 10;

} // namespace

std::optional<std::string> foreignContent(std::string_view bytes) {
    const auto is = [](std::string_view what) { return "the content is " + std::string(what); };
    std::string_view start = bytes;
    if (start.starts_with("\xEF\xBB\xBF")) start.remove_prefix(3);
    while (!start.empty() && text::isBlank(start.front()))
        start.remove_prefix(1);
    for (const Signature& signature : kSignatures)
        if (start.starts_with(signature.bytes)) return is(signature.what);
    const std::string_view looked = bytes.substr(0, kLookedAt);
    const std::size_t binary = text::countBinaryBytes(looked);
    if (binary * kBinaryShare <= looked.size()) return std::nullopt;
    const SniffedEncoding sniffed = sniffEncoding(bytes);
    if (sniffed.encoding == text::Encoding::utf16le || sniffed.encoding == text::Encoding::utf16be) return std::nullopt;
    return is("binary data");
}

} // namespace quillow::html
