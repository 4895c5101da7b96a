#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"

#include "engines/pdf/fonts/fontfiles/CffFile.h"
#include "engines/pdf/fonts/fontfiles/TrueTypeFile.h"
#include "engines/pdf/fonts/fontfiles/Type1File.h"

namespace quillow::pdf {

GlyphIndex EmbeddedFont::glyphOfCid(std::uint32_t cid) {
    return cid < glyphCount() ? static_cast<GlyphIndex>(cid) : GlyphIndex{0};
}

std::unique_ptr<EmbeddedFont> openEmbeddedFont(std::string_view bytes) {
    if (TableDirectory::isAt(bytes)) return std::make_unique<TrueTypeFile>(bytes);
    if (CffFile::isOne(bytes)) return std::make_unique<CffFile>(bytes);
    if (Type1File::isOne(bytes)) return std::make_unique<Type1File>(bytes);
    return nullptr;
}

} // namespace quillow::pdf
