#include "engines/pdf/content/InlineDictionary.h"

#include "engines/pdf/content/ContentScanner.h"
#include "engines/pdf/content/HexString.h"
#include "engines/pdf/syntax/Lexer.h"

#include <limits>

namespace quillow::pdf {

namespace {

void appendHex(std::string_view raw, text::ByteBuffer& out) {
    const std::size_t at = out.size();
    out.resize(at + raw.size() / 2 + 1);
    const char* const to = decodeLooseHex(raw, out.data() + at);
    out.resize(static_cast<std::size_t>(to - out.data()));
}

/// Behind a literal string, a hexadecimal one or a dictionary at `p`.
const char* skipBracketed(const char* p, const char* end) {
    if (*p == '<' && p + 1 < end && p[1] == '<') {
        const char* const close = endOfDictionary(p + 2, end);
        return close == nullptr ? end : close + 2;
    }
    return readString(p, end).end;
}

} // namespace

void appendString(const Operand& string, text::ByteBuffer& out) {
    switch (string.kind) {
    case Operand::Kind::plainString: out.append(string.view()); break;
    case Operand::Kind::escapedString: unescapeString(string.view(), '(', out); break;
    default: break;
    }
}

const char* InlineDictionary::find(std::string_view key) const {
    const char* p = bytes_.data();
    const char* const end = p + bytes_.size();
    while ((p = skipWhiteSpace(p, end)) < end) {
        if (*p == '(' || *p == '<') {
            p = skipBracketed(p, end);
        } else if (*p == '/') {
            const std::string_view name = readRawName(p + 1, end);
            p = name.data() + name.size();
            if (name == key) return skipWhiteSpace(p, end);
        } else {
            ++p;
        }
    }
    return nullptr;
}

std::optional<std::int32_t> InlineDictionary::integer(std::string_view key) const {
    const char* const value = find(key);
    if (value == nullptr) return std::nullopt;
    const NumberToken number = readNumber(value, bytes_.data() + bytes_.size());
    constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
    if (number.end == value || number.value < -kLargest || number.value > kLargest) return std::nullopt;
    return static_cast<std::int32_t>(number.value);
}

std::string_view InlineDictionary::name(std::string_view key) const {
    const char* const value = find(key);
    const char* const end = bytes_.data() + bytes_.size();
    if (value == nullptr || value == end || *value != '/') return {};
    return readRawName(value + 1, end);
}

bool InlineDictionary::string(std::string_view key, text::ByteBuffer& out) const {
    const char* const value = find(key);
    const char* const end = bytes_.data() + bytes_.size();
    if (value == nullptr || value == end || (*value != '(' && *value != '<')) return false;
    const StringToken token = readString(value, end);
    if (*value == '<')
        appendHex(token.raw, out);
    else
        unescapeString(token.raw, '(', out);
    return true;
}

} // namespace quillow::pdf
