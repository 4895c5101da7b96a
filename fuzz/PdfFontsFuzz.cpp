// Any bytes as the objects of a document whose objects 4 to 9 are fonts: all codes have glyphs with sane numbers and
// characters that may leave the engine.
#include "engines/pdf/fonts/FontCache.h"
#include "text/Unicode.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using namespace quillow;
using namespace quillow::pdf;

constexpr std::string_view kOnePage = "%PDF-1.7\n"
                                      "1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj\n"
                                      "2 0 obj << /Type /Pages /Kids [3 0 R] /Count 1 >> endobj\n"
                                      "3 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] >> endobj\n"
                                      "trailer << /Root 1 0 R >>\n";
constexpr std::uint32_t kFirstFont = 4;
constexpr std::uint32_t kLastFont = 9;

void require(bool holds) {
    if (!holds) std::abort();
}

/// All codes of one byte, and some of more, as one string.
std::string manyCodes(std::string_view bytes) {
    std::string codes;
    for (int byte = 0; byte < 256; ++byte)
        codes.push_back(static_cast<char>(byte));
    for (int low = 0; low < 256; low += 3)
        codes.append({'\0', static_cast<char>(low), '\x81', static_cast<char>(low)});
    codes.append(bytes.substr(0, 256));
    return codes;
}

void checkGlyph(const FontGlyph& glyph) {
    require(std::isfinite(glyph.width) && std::isfinite(glyph.verticalAdvance));
    require(std::isfinite(glyph.verticalX) && std::isfinite(glyph.verticalY));
    require(std::all_of(glyph.text.begin(), glyph.text.end(), text::isInterchangeable));
    require(glyph.isKnown || glyph.text == U"\uFFFD");
}

void checkFont(Font& font, std::string_view codes) {
    require(std::isfinite(font.ascent()) && std::isfinite(font.descent()));
    const char* p = codes.data();
    const char* const end = p + codes.size();
    while (p != end) {
        const char* const start = p;
        const FontGlyph& glyph = font.next(p, end);
        require(p > start && p <= end);
        checkGlyph(glyph);
        const char* again = start;
        require(&font.next(again, end) == &glyph && again == p);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view objects(reinterpret_cast<const char*>(data), size);
    const std::string file = std::string(kOnePage).append(objects);
    auto document = Document::open(file);
    if (!document) return 0;
    FontCache fonts(*document.value());
    const std::string codes = manyCodes(objects);
    for (std::uint32_t number = kFirstFont; number <= kLastFont; ++number)
        checkFont(fonts.fontOf(Object::ofReference({number, 0})), codes);
    return 0;
}
