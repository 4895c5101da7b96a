// Names and codes of any bytes: what they give is interchangeable, and every code moves on. The first byte chooses
// the CMap.
#include "engines/pdf/fonts/Encodings.h"
#include "engines/pdf/fonts/GlyphNames.h"
#include "engines/pdf/fonts/PredefinedCMaps.h"
#include "engines/pdf/fonts/StandardFonts.h"
#include "text/Unicode.h"

#include <cstdlib>

namespace {

using namespace quillow;

void require(bool holds) {
    if (!holds) std::abort();
}

void checkText(const pdf::GlyphText& text) {
    for (const char32_t c : text)
        require(text::isInterchangeable(c));
}

void checkName(std::string_view name) {
    for (const auto table : {pdf::GlyphNameTable::Adobe, pdf::GlyphNameTable::Tex, pdf::GlyphNameTable::ZapfDingbats})
        checkText(pdf::unicodeOfGlyphName(name, table));
    require(pdf::glyphIndexOfName(name).value_or(0) <= 0xFFFF);
    require(pdf::codeOfName(name).value_or(0) <= 0xFF);
    static_cast<void>(pdf::encodingOfName(name));
    static_cast<void>(pdf::texEncodingOfFont(name));
    static_cast<void>(pdf::predefinedCMap(name));
    if (const auto font = pdf::standardFontOfName(name)) static_cast<void>(pdf::widthOfGlyph(*font, name));
}

void checkCodes(const pdf::PredefinedCMap& cmap, std::string_view bytes) {
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    while (p < end) {
        const char* const start = p;
        const pdf::CharacterCode code = cmap.next(p, end);
        require(p > start && p <= end && p - start == code.bytes);
        checkText(pdf::unicodeOfCid(cmap.collection, cmap.cidOf(code)));
        require(text::isInterchangeable(cmap.unicodeOf(code)));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    checkName(bytes);
    if (size == 0) return 0;
    const auto cmaps = pdf::allPredefinedCMaps();
    checkCodes(cmaps[data[0] % cmaps.size()], bytes.substr(1));
    return 0;
}
