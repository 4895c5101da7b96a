#include "engines/html/parser/EncodingSniffer.h"

#include "text/Ascii.h"
#include "text/EncodingDetector.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace quillow::html {

namespace {

using namespace std::string_view_literals;
using text::Encoding;

/// The prescan with its position in the bytes, and "get an attribute", section 13.2.3.2.
class Prescanner {
public:
    explicit Prescanner(std::string_view bytes)
        : bytes_(bytes) {}

    std::optional<Encoding> run();

private:
    struct Attribute {
        std::string name;
        std::string value;
    };

    [[nodiscard]] bool atEnd() const { return at_ >= bytes_.size(); }
    [[nodiscard]] bool startsWith(std::string_view lowerCase) const {
        return text::equalsIgnoringCase(bytes_.substr(at_, lowerCase.size()), lowerCase);
    }
    void skipPast(std::string_view end);
    void skipWhiteSpace() {
        while (!atEnd() && text::isBlank(bytes_[at_]))
            ++at_;
    }
    std::optional<Attribute> getAttribute();
    std::string getValue();
    std::optional<Encoding> readMeta();
    bool startsTag() const;

    std::string_view bytes_;
    std::size_t at_ = 0;
};

void Prescanner::skipPast(std::string_view end) {
    const std::size_t found = bytes_.find(end, at_);
    at_ = found == std::string_view::npos ? bytes_.size() : found + end.size();
}

bool Prescanner::startsTag() const {
    const std::size_t letter = at_ + (at_ + 1 < bytes_.size() && bytes_[at_ + 1] == '/' ? 2 : 1);
    return letter < bytes_.size() && text::isLetter(bytes_[letter]);
}

std::optional<Encoding> Prescanner::run() {
    constexpr std::string_view kMeta = "<meta";
    while (!atEnd()) {
        const std::size_t open = bytes_.find('<', at_);
        if (open == std::string_view::npos) return std::nullopt;
        at_ = open;
        if (startsWith("<!--")) {
            at_ += 2; // in "<!-->" the dashes belong to both ends
            skipPast("-->");
        } else if (startsWith(kMeta) && at_ + kMeta.size() < bytes_.size() &&
                   (text::isBlank(bytes_[at_ + kMeta.size()]) || bytes_[at_ + kMeta.size()] == '/')) {
            at_ += kMeta.size();
            if (const auto encoding = readMeta()) return encoding;
        } else if (startsTag()) {
            while (!atEnd() && !text::isBlank(bytes_[at_]) && bytes_[at_] != '>')
                ++at_;
            while (getAttribute()) {
            }
        } else if (startsWith("<!") || startsWith("</") || startsWith("<?")) {
            skipPast(">");
        } else {
            ++at_;
        }
    }
    return std::nullopt;
}

std::optional<Encoding> Prescanner::readMeta() {
    bool gotPragma = false;
    bool needPragma = false;
    bool seenContent = false;
    bool seenCharset = false;
    bool seenHttpEquiv = false;
    std::optional<Encoding> charset;
    while (const auto attribute = getAttribute()) {
        if (attribute->name == "http-equiv" && !seenHttpEquiv) {
            seenHttpEquiv = true;
            gotPragma = attribute->value == "content-type";
        } else if (attribute->name == "content" && !seenContent) {
            const auto found = encodingFromContentType(attribute->value);
            if (found && !charset) {
                seenContent = true;
                charset = found;
                needPragma = true;
            }
        } else if (attribute->name == "charset" && !seenCharset) {
            seenCharset = true;
            charset = text::encodingForLabel(attribute->value);
            needPragma = false;
        }
    }
    if (atEnd()) return std::nullopt; // a truncated tag declares nothing
    if (!charset || (needPragma && !gotPragma)) return std::nullopt;
    if (*charset == Encoding::utf16be || *charset == Encoding::utf16le) return Encoding::utf8;
    if (*charset == Encoding::xUserDefined) return Encoding::windows1252;
    return charset;
}

std::optional<Prescanner::Attribute> Prescanner::getAttribute() {
    while (!atEnd() && (text::isBlank(bytes_[at_]) || bytes_[at_] == '/'))
        ++at_;
    if (atEnd()) return std::nullopt;
    if (bytes_[at_] == '>') return std::nullopt;
    Attribute attribute;
    for (;; ++at_) {
        if (atEnd()) return std::nullopt;
        const char c = bytes_[at_];
        if (c == '=' && !attribute.name.empty()) break;
        if (text::isBlank(c)) {
            skipWhiteSpace();
            if (atEnd() || bytes_[at_] != '=') return attribute;
            break;
        }
        if (c == '/' || c == '>') return attribute;
        attribute.name.push_back(text::toLower(c));
    }
    ++at_; // "="
    skipWhiteSpace();
    attribute.value = getValue();
    return attribute;
}

std::string Prescanner::getValue() {
    std::string value;
    if (atEnd() || bytes_[at_] == '>') return value;
    if (bytes_[at_] == '"' || bytes_[at_] == '\'') {
        const char quote = bytes_[at_++];
        const std::size_t end = std::min(bytes_.find(quote, at_), bytes_.size());
        value = bytes_.substr(at_, end - at_);
        std::transform(value.begin(), value.end(), value.begin(), text::toLower);
        at_ = std::min(end + 1, bytes_.size());
        return value;
    }
    for (; !atEnd() && !text::isBlank(bytes_[at_]) && bytes_[at_] != '>'; ++at_)
        value.push_back(text::toLower(bytes_[at_]));
    return value;
}

/// Detects UTF-16 without a byte-order mark: an XML declaration in UTF-16 (section 13.2.3.2), or zero bytes. ASCII
/// characters have a zero byte in UTF-16, so nearly every second byte at the start must be zero.
std::optional<Encoding> unmarkedUtf16(std::string_view bytes) {
    if (bytes.starts_with("<\0?\0x\0"sv)) return Encoding::utf16le;
    if (bytes.starts_with("\0<\0?\0x"sv)) return Encoding::utf16be;
    constexpr std::size_t kMostBytes = 256;
    constexpr std::size_t kFewestBytes = 4;
    // Of the bytes at even or at odd offsets at least this share must be zero, and of the others at most that one.
    constexpr std::size_t kFewestZeroPercent = 70;
    constexpr std::size_t kMostStrayZeroPercent = 10;
    const std::string_view start = bytes.substr(0, kMostBytes);
    if (start.size() < kFewestBytes) return std::nullopt;
    std::size_t zeros[2] = {0, 0};
    for (std::size_t i = 0; i < start.size(); ++i)
        if (start[i] == '\0') ++zeros[i % 2];
    const std::size_t half = start.size() / 2;
    const auto hasOnly = [&](std::size_t side, std::size_t other) {
        return zeros[side] * 100 >= half * kFewestZeroPercent && zeros[other] * 100 <= half * kMostStrayZeroPercent;
    };
    if (hasOnly(0, 1)) return Encoding::utf16be;
    if (hasOnly(1, 0)) return Encoding::utf16le;
    return std::nullopt;
}

/// Zero bytes in a document that is not UTF-16 are damage, so the detector gets the document without them.
Encoding detectWithoutNul(std::string_view bytes) {
    if (bytes.find('\0') == std::string_view::npos) return text::detectEncoding(bytes);
    std::string kept(bytes);
    std::erase(kept, '\0');
    return text::detectEncoding(kept);
}

} // namespace

std::optional<Encoding> prescanEncoding(std::string_view bytes) {
    return Prescanner(bytes).run();
}

/// Its steps look for "encoding" in all of the bytes; as in browsers, it counts in the declaration only.
std::optional<Encoding> xmlEncoding(std::string_view bytes) {
    if (!bytes.starts_with("<?xml")) return std::nullopt;
    const std::size_t end = bytes.find('>');
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view declaration = bytes.substr(0, end);
    constexpr std::string_view kName = "encoding";
    std::size_t at = declaration.find(kName);
    if (at == std::string_view::npos) return std::nullopt;
    at += kName.size();
    const auto isBlank = [](char c) { return static_cast<std::uint8_t>(c) <= 0x20; };
    const auto skipBlanks = [&] {
        while (at < declaration.size() && isBlank(declaration[at]))
            ++at;
    };
    skipBlanks();
    if (at == declaration.size() || declaration[at] != '=') return std::nullopt;
    ++at;
    skipBlanks();
    if (at == declaration.size() || (declaration[at] != '"' && declaration[at] != '\'')) return std::nullopt;
    const std::size_t close = declaration.find(declaration[at], at + 1);
    if (close == std::string_view::npos) return std::nullopt;
    const std::string_view label = declaration.substr(at + 1, close - at - 1);
    if (std::any_of(label.begin(), label.end(), isBlank)) return std::nullopt;
    const auto encoding = text::encodingForLabel(label);
    if (encoding == Encoding::utf16be || encoding == Encoding::utf16le) return Encoding::utf8;
    return encoding;
}

std::optional<Encoding> encodingFromContentType(std::string_view content) {
    constexpr std::string_view kName = "charset";
    std::size_t at = 0;
    for (;;) {
        at = text::findIgnoringCase(content, kName, at);
        if (at == std::string_view::npos) return std::nullopt;
        at += kName.size();
        while (at < content.size() && text::isBlank(content[at]))
            ++at;
        if (at < content.size() && content[at] == '=') break;
    }
    std::string_view label = text::trimBlanks(content.substr(at + 1));
    if (label.empty()) return std::nullopt;
    if (label.front() == '"' || label.front() == '\'') {
        const std::size_t end = label.find(label.front(), 1);
        if (end == std::string_view::npos) return std::nullopt;
        return text::encodingForLabel(label.substr(1, end - 1));
    }
    return text::encodingForLabel(label.substr(0, label.find_first_of(" \t\n\f\r;")));
}

std::optional<Encoding> declaredEncoding(std::string_view bytes) {
    const std::string_view first = bytes.substr(0, kPrescanBytes);
    auto declared = prescanEncoding(first);
    if (!declared) declared = xmlEncoding(first);
    if (declared || bytes.size() <= kPrescanBytes) return declared;
    return prescanEncoding(bytes.substr(0, kLatePrescanBytes));
}

SniffedEncoding sniffEncoding(std::string_view bytes) {
    return sniffEncoding(bytes, text::wellFormedUtf8Prefix(bytes));
}

SniffedEncoding sniffEncoding(std::string_view bytes, const text::Utf8Prefix& utf8) {
    if (const auto mark = text::byteOrderMark(bytes)) return {mark->encoding, mark->length};
    if (const auto wide = unmarkedUtf16(bytes)) return {*wide, 0};
    // Bytes are not multi-byte UTF-8 by accident, so this overrides any declaration.
    const bool multiByteUtf8 = utf8.bytes == bytes.size() && utf8.codePoints < utf8.bytes;
    if (multiByteUtf8) return {Encoding::utf8, 0};
    if (const auto declared = declaredEncoding(bytes)) return {*declared, 0};
    return {detectWithoutNul(bytes), 0};
}

} // namespace quillow::html
