// Any bytes as objects: the parser ends inside the bytes, every object can be walked, and the same bytes give the same
// objects wherever they are.
#include "engines/pdf/syntax/Lexer.h"
#include "engines/pdf/syntax/ObjectParser.h"
#include "engines/pdf/syntax/TextString.h"
#include "text/Unicode.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace {

using namespace quillow;
using namespace quillow::pdf;

void require(bool holds) {
    if (!holds) std::abort();
}

/// A sum over all values of an object.
std::size_t walk(const Object& object, std::size_t depth) {
    require(depth <= kMaximumNesting + 1);
    std::size_t sum = static_cast<std::size_t>(object.type()) + object.name().size() + object.reference().number;
    require(std::isfinite(object.numberOr(0)));
    for (const char32_t c : decodeTextString(object.string())) {
        require(c <= text::kLastCodePoint && !text::isSurrogate(c));
        sum += c;
    }
    require(object.array().size() <= kMaximumItems);
    for (const Object& item : object.array())
        sum = sum * 31 + walk(item, depth + 1);
    for (const auto& [key, value] : object.dictionary().entries()) {
        sum = sum * 31 + key.size() + walk(value, depth + 1);
        if (object.dictionary().order() == EntryOrder::sorted) {
            const Object found = object.dictionary().find(key);
            require(found.type() == value.type() && found.name() == value.name() &&
                    found.array().data() == value.array().data());
        }
    }
    return sum;
}

void checkParser(std::string_view bytes) {
    Arena arena;
    ObjectParser parser(arena);
    const char* const end = bytes.data() + bytes.size();
    for (const char* p = bytes.data(); p < end;) {
        const ParsedObject parsed = parser.parse(p, end);
        require(parsed.end >= p && parsed.end <= end);
        const std::string copy(p, parsed.end);
        const std::size_t sum = walk(parsed.object, 0);
        if (parsed.isWhole && !copy.empty()) {
            const ParsedObject again = parser.parse(copy.data(), copy.data() + copy.size());
            require(walk(again.object, 0) == sum || parsed.object.type() == Object::Type::integer);
        }
        p = parsed.end == p ? p + 1 : parsed.end;
        if (!parsed.isWhole && p < end) ++p;
    }
}

void checkTokens(std::string_view bytes) {
    const char* const end = bytes.data() + bytes.size();
    text::ByteBuffer out;
    for (const char* p = skipWhiteSpace(bytes.data(), end); p < end; p = skipWhiteSpace(p, end)) {
        const NumberToken number = readNumber(p, end);
        require(number.end >= p && number.end <= end && std::isfinite(number.value));
        const std::string_view name = readRawName(p, end);
        require(name.data() == p && name.size() <= static_cast<std::size_t>(end - p));
        if (*p != '(' && *p != '<') {
            p += name.empty() ? 1 : name.size();
            continue;
        }
        const StringToken string = readString(p, end);
        require(string.end > p && string.end <= end);
        out.clear();
        unescapeString(string.raw, *p, out);
        require(out.size() <= string.raw.size());
        require(!string.isPlain || out.view() == string.raw);
        p = string.end;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    checkTokens(bytes);
    checkParser(bytes);
    (void)decodeTextString(bytes);
    return 0;
}
