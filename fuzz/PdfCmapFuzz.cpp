// Any bytes as a CMap: parsing ends, every code has at most one meaning, and strings are cut into codes to their end.
#include "engines/pdf/fonts/CMap.h"
#include "engines/pdf/fonts/Characters.h"
#include "engines/pdf/fonts/CodeReader.h"
#include "text/Unicode.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using namespace quillow;
using namespace quillow::pdf;

void require(bool holds) {
    if (!holds) std::abort();
}

void checkCode(const CMap& map, std::uint32_t code) {
    std::u32string characters;
    map.charactersOf(code, characters);
    const CharacterEvidence evidence = keepUsable(characters, text::symbolToUnicode);
    require((evidence == CharacterEvidence::characters) == !characters.empty());
    require(std::all_of(characters.begin(), characters.end(), text::isInterchangeable));
    (void)map.cidOf(code);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const CMap map = CMap::parse(bytes);
    const CodeReader reader(map.codespace());
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    while (p != end) {
        const char* const start = p;
        checkCode(map, reader.next(p, end));
        require(p > start && p <= end && p - start <= 4);
    }
    for (std::uint32_t code = 0; code < 0x200; ++code)
        checkCode(map, code);
    return 0;
}
