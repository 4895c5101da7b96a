// Any bytes through the scanner: it always reaches the end, its fast paths agree with the slow ones, and
// skipGroup() stops at the same brace as the tokens.
#include "engines/rtf/Scanner.h"
#include "text/Ascii.h"
#include "text/CodePage.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace quillow;
using namespace quillow::rtf;

void require(bool holds) {
    if (!holds) std::abort();
}

/// The end of the group that is open at the start, found by its tokens; nullptr if it never closes.
const char* endOfGroup(std::string_view bytes) {
    Scanner scanner(bytes);
    std::size_t depth = 1;
    while (true) {
        const char* before = scanner.position();
        const Token token = scanner.nextToken();
        if (token.kind == Token::Kind::end) return nullptr;
        require(scanner.position() > before && scanner.position() <= scanner.end());
        if (token.kind == Token::Kind::open) ++depth;
        if (token.kind == Token::Kind::close && --depth == 0) return scanner.position();
    }
}

void checkSkipping(std::string_view bytes) {
    Scanner scanner(bytes);
    const bool isWhole = scanner.skipGroup(nullptr) == Scanner::Completeness::whole;
    require(scanner.position() <= scanner.end());
    const char* end = endOfGroup(bytes);
    require(isWhole == (end != nullptr));
    if (isWhole) require(scanner.position() == end);

    // With a double-byte code page it may stop elsewhere, but it must stop.
    Scanner pairs(bytes);
    (void)pairs.skipGroup(text::CodePage::forNumber(932));
    require(pairs.position() <= pairs.end());
}

/// Checks that both ways to read a name agree: byte by byte near the end of the input, and a block at a time elsewhere.
void checkWord(std::string_view bytes) {
    Scanner fast(bytes);
    if (!fast.atWord()) return;
    const auto letters =
        static_cast<std::size_t>(std::find_if_not(bytes.begin() + 1, bytes.end(), text::isLetter) - bytes.begin());
    Scanner slow(bytes.substr(0, letters));
    const Keyword fastName = fast.readName();
    const Keyword slowName = slow.readName();
    require(fastName.action == slowName.action && fastName.value == slowName.value);
    require(fast.position() == bytes.data() + letters && slow.atEnd());

    Scanner skipping = fast;
    skipping.skipParameter();
    (void)fast.readParameter(fastName);
    require(fast.position() == skipping.position());
}

void checkScans(std::string_view bytes) {
    const char* begin = bytes.data();
    const char* end = begin + bytes.size();
    require(findTextEnd(begin, end) == std::find_if_not(begin, end, isPlainText));
    require(findSyntax(begin, end) == std::find_if(begin, end, isSyntax));
    require(findHighByte(begin, end) == std::find_if(begin, end, isHigh));
    const auto isLead = [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0) != 0x80; };
    require(countCodePoints(begin, end) == static_cast<std::uint64_t>(std::count_if(begin, end, isLead)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    checkSkipping(bytes);
    checkScans(bytes);
    constexpr std::size_t kMostWords = 256;
    std::size_t words = 0;
    for (std::size_t at = bytes.find('\\'); at != std::string_view::npos && words < kMostWords;
         at = bytes.find('\\', at + 1)) {
        checkWord(bytes.substr(at));
        ++words;
    }
    return 0;
}
