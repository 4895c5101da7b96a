// Any text through the HTML tokenizer, from each of its initial states: tokens are well-formed UTF-8, their number
// and size are bounded by the source, names are in lower case, character tokens are never empty, and the end is
// reached.
#include "engines/html/parser/Parse.h"
#include "engines/html/parser/TreeBuilder.h"
#include "text/Encoding.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cstdlib>

using namespace quillow::html;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

void checkText(std::string_view text, std::size_t& total) {
    require(quillow::text::isValidUtf8(text));
    total += text.size();
}

void checkName(std::string_view name, std::size_t& total) {
    checkText(name, total);
    require(std::none_of(name.begin(), name.end(), [](char c) { return c == '\0' || (c >= 'A' && c <= 'Z'); }));
}

void check(const Token& token, std::size_t& total) {
    if (token.type == TokenType::doctype) {
        checkName(token.name, total);
        checkText(token.publicId, total);
        checkText(token.systemId, total);
    } else if (token.type == TokenType::startTag || token.type == TokenType::endTag) {
        require(!token.name.empty() && token.tag == tagForKey(keyOf(token.name)) &&
                token.attributes.size() <= kMaxAttributes);
        checkName(token.name, total);
        for (const Attribute& attribute : token.attributes) {
            require(!attribute.name().empty());
            checkName(attribute.name(), total);
            checkText(attribute.value(), total);
        }
    } else {
        require(token.type == TokenType::comment || !token.text.empty());
        checkText(token.text, total);
    }
}

} // namespace

// The first byte chooses the state and whether CDATA sections are allowed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    Tree tree("<x>" + withLineFeeds(quillow::text::decode(bytes, quillow::text::Encoding::utf8).utf8));
    const std::size_t source = tree.source().size();
    Tokenizer tokenizer(tree);
    Token token;
    tokenizer.next(token);
    tokenizer.switchTo(static_cast<Tokenizer::State>(data[0] % 5));
    tokenizer.allowCdata(data[0] >= 0x80);
    std::size_t count = 0;
    std::size_t total = 0;
    for (tokenizer.next(token); token.type != TokenType::endOfFile; tokenizer.next(token)) {
        require(++count <= source);
        check(token, total);
    }
    // U+0000 becomes three bytes. Among the references, those like "&nGt;" grow most: from five bytes to six.
    require(total <= 3 * source);
    tokenizer.next(token);
    require(token.type == TokenType::endOfFile);
    return 0;
}
