#include "engines/ContentSniffer.h"

#include "engines/html/parser/EncodingSniffer.h"
#include "engines/rtf/Header.h"
#include "text/Ascii.h"
#include "text/ByteScan.h"

#include <array>
#include <string>

namespace quillow {

namespace {

using namespace std::string_view_literals;

/// The MIME Sniffing Standard's "resource header": no signature lies beyond these many bytes.
constexpr std::size_t kResourceHeader = 1445;

/// Converts UTF-16 to ASCII. Other characters become 0x7F, which no signature contains.
std::string narrowed(std::string_view bytes, std::size_t lowByte) {
    std::string ascii;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const char low = bytes[i + lowByte];
        const char high = bytes[i + 1 - lowByte];
        ascii.push_back(high == '\0' && low > '\0' ? low : '\x7F');
    }
    return ascii;
}

/// The first bytes without byte-order mark and leading blanks; UTF-16 is converted to ASCII.
std::string header(std::string_view bytes) {
    bytes = bytes.substr(0, kResourceHeader * 2);
    std::string ascii;
    if (bytes.starts_with("\xFF\xFE")) {
        ascii = narrowed(bytes.substr(2), 0);
    } else if (bytes.starts_with("\xFE\xFF")) {
        ascii = narrowed(bytes.substr(2), 1);
    } else if (bytes.size() >= 4 && bytes[0] == '\0' && bytes[1] > '\0' && bytes[2] == '\0') {
        ascii = narrowed(bytes, 1);
    } else if (bytes.size() >= 4 && bytes[0] > '\0' && bytes[1] == '\0' && bytes[3] == '\0') {
        ascii = narrowed(bytes, 0);
    } else {
        if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
        ascii = bytes;
    }
    std::size_t begin = 0;
    while (begin < ascii.size() && text::isBlank(ascii[begin]))
        ++begin;
    return ascii.substr(begin);
}

/// MIME Sniffing, section 7.1, the patterns of text/html; each is followed by a tag-terminating byte.
constexpr std::array kHtmlPatterns = {
    "<!doctype html"sv, "<html"sv, "<head"sv,  "<script"sv, "<iframe"sv, "<h1"sv,   "<div"sv, "<font"sv,
    "<table"sv,         "<a"sv,    "<style"sv, "<title"sv,  "<b"sv,      "<body"sv, "<br"sv,  "<p"sv,
};

/// The tag-terminating bytes of the standard are SP and ">"; a tag name ends before any other blank too.
bool endsTag(std::string_view rest) {
    return !rest.empty() && (text::isBlank(rest.front()) || rest.front() == '>');
}

bool startsAsHtml(std::string_view text) {
    if (text.starts_with("<!--")) return true;
    for (const std::string_view pattern : kHtmlPatterns)
        if (text::startsWithIgnoringCase(text, pattern) && endsTag(text.substr(pattern.size()))) return true;
    return false;
}

struct Signature {
    std::string_view bytes;
    std::string_view description;
};
constexpr std::array kForeignSignatures = {
    Signature{"\x89PNG\r\n\x1A\n"sv, "a PNG image"sv},
    Signature{"\xFF\xD8\xFF"sv, "a JPEG image"sv},
    Signature{"GIF87a"sv, "a GIF image"sv},
    Signature{"GIF89a"sv, "a GIF image"sv},
    Signature{"II*\0"sv, "a TIFF image"sv},
    Signature{"MM\0*"sv, "a TIFF image"sv},
    Signature{"PK\x03\x04"sv, "a ZIP archive or an office document"sv},
    Signature{"PK\x05\x06"sv, "an empty ZIP archive"sv},
    Signature{"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "a compound file, as old office documents are"sv},
    Signature{"\x1F\x8B\x08"sv, "gzip-compressed data"sv},
    Signature{"\xFD\x37zXZ\0"sv, "xz-compressed data"sv},
    Signature{"\x28\xB5\x2F\xFD"sv, "zstd-compressed data"sv},
    Signature{"7z\xBC\xAF\x27\x1C"sv, "a 7z archive"sv},
    Signature{"Rar!\x1A\x07"sv, "a RAR archive"sv},
    Signature{"\x7F"
              "ELF"sv,
              "a program"sv},
    Signature{"%!PS-Adobe-"sv, "a PostScript document"sv},
    Signature{"bplist00"sv, "a binary property list"sv},
    Signature{"SQLite format 3\0"sv, "an SQLite database"sv},
    Signature{"OggS\0"sv, "an Ogg recording"sv},
};

std::string_view asText(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The most bytes of a message header that are examined. Browsers write some ten short fields and the page's address.
constexpr std::size_t kMessageHeader = 8192;

/// Letters, digits and hyphens: RFC 5322, 2.2 allows more, but no registered field has them, and HTML's "<p>a:" does.
bool isFieldName(std::string_view name) {
    for (const char c : name) {
        if (!text::isLetter(c) && !text::isDigit(c) && c != '-') return false;
    }
    return !name.empty();
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(text::skipBlanks(text, 0));
}

/// The header of a MIME message (RFC 2045): fields from the first byte on, the version among them.
struct MessageHeader {
    bool isMime = false;
    std::string_view contentType; ///< the value with its parameters, unparsed
};

MessageHeader messageHeader(std::string_view bytes) {
    MessageHeader header;
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    std::string_view rest = withoutLeadingBlanks(bytes.substr(0, kMessageHeader));
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        if (line.empty() || line == "\r") break;
        if (text::isBlank(line.front())) continue; // continues the previous field
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos || !isFieldName(line.substr(0, colon))) break;
        if (text::startsWithIgnoringCase(line, "mime-version:")) header.isMime = true;
        if (text::startsWithIgnoringCase(line, "content-type:"))
            header.contentType = withoutLeadingBlanks(line.substr(13));
    }
    return header;
}

/// A page saved with its parts is multipart/related (RFC 2557), one without parts is the HTML itself.
std::optional<std::string_view> describeMessage(std::string_view bytes) {
    const MessageHeader header = messageHeader(bytes);
    if (!header.isMime) return std::nullopt;
    for (const std::string_view type : {"multipart/related"sv, "text/html"sv})
        if (text::startsWithIgnoringCase(header.contentType, type)) return "a MIME web archive"sv;
    return "a MIME message"sv;
}

/// Content with more than one binary byte in ten is not text. Fewer count as damage.
constexpr std::size_t kBinaryShare = 10;
/// How many bytes of the content are counted for that.
constexpr std::size_t kBinaryWindow = 4096;

bool isBinary(std::string_view bytes) {
    const std::string_view start = bytes.substr(0, kBinaryWindow);
    if (text::countBinaryBytes(start) * kBinaryShare <= start.size()) return false;
    const text::Encoding encoding = html::sniffEncoding(bytes).encoding;
    return encoding != text::Encoding::utf16le && encoding != text::Encoding::utf16be;
}

bool isRtf(DocumentKind kind) {
    return kind == DocumentKind::rtf || kind == DocumentKind::rtfd;
}

bool looksLikeRtf(std::string_view bytes) {
    return header(bytes).starts_with("{\\rtf");
}

bool startsAsPdf(std::string_view bytes) {
    return header(bytes).starts_with("%PDF-");
}

bool looksLikePdf(std::string_view bytes) {
    return bytes.substr(0, kPdfHeaderWindow).find("%PDF-") != std::string_view::npos;
}

bool looksLikeHtml(std::string_view bytes) {
    const std::string text = header(bytes);
    std::string_view rest = text;
    if (text::startsWithIgnoringCase(rest, "<?xml")) {
        const std::size_t end = rest.find("?>");
        if (end == std::string_view::npos) return false;
        rest.remove_prefix(end + 2);
        while (!rest.empty() && text::isBlank(rest.front()))
            rest.remove_prefix(1);
    }
    return startsAsHtml(rest);
}

std::string_view describeKind(DocumentKind kind) {
    switch (kind) {
    case DocumentKind::rtf:
    case DocumentKind::rtfd: return "an RTF document";
    case DocumentKind::html: return "an HTML page";
    case DocumentKind::pdf: return "a PDF";
    }
    return "a document";
}

} // namespace

std::optional<DocumentKind> sniffDocumentKind(std::span<const std::byte> bytes) {
    const std::string_view text = asText(bytes);
    if (looksLikeRtf(text)) return DocumentKind::rtf;
    // HTML is checked first, because a page may mention a PDF header in its text.
    if (looksLikeHtml(text)) return DocumentKind::html;
    if (looksLikePdf(text)) return DocumentKind::pdf;
    return std::nullopt;
}

std::optional<std::string_view> describeForeignContent(std::span<const std::byte> bytes) {
    const std::string_view text = asText(bytes);
    for (const Signature& signature : kForeignSignatures)
        if (text.starts_with(signature.bytes)) return signature.description;
    if (text.starts_with("RIFF") && text.substr(0, 12).ends_with("WEBP")) return "a WebP image"sv;
    if (text.substr(0, 8).ends_with("ftyp")) return "a media file"sv;
    return describeMessage(text);
}

std::optional<std::string_view> describeOtherContent(std::span<const std::byte> bytes, DocumentKind kind) {
    std::string_view text = asText(bytes);
    if (const auto sniffed = sniffDocumentKind(bytes)) {
        if (sniffed == kind || (sniffed == DocumentKind::rtf && isRtf(kind))) return std::nullopt;
        // A text may mention a PDF header further on.
        if (sniffed == DocumentKind::pdf && !startsAsPdf(text)) return std::nullopt;
        return describeKind(*sniffed);
    }
    if (const auto foreign = describeForeignContent(bytes)) return foreign;
    if (kind == DocumentKind::pdf) return std::nullopt;
    if (isRtf(kind)) {
        if (header(text).starts_with("<?xml")) return "an XML document"sv;
        // Text may come before the document, such as a mail header. The document itself may contain binary data.
        text = text.substr(0, rtf::findRtfGroup(text, 0));
    }
    return isBinary(text) ? std::optional("binary data"sv) : std::nullopt;
}

} // namespace quillow
