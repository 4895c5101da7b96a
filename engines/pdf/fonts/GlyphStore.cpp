#include "engines/pdf/fonts/GlyphStore.h"

namespace quillow::pdf {

const FontGlyph& GlyphStore::add(std::uint32_t code, const FontGlyph& glyph) {
    Entry& entry = entries_.emplace_back(Entry{glyph, 0});
    if (glyph.text.size() == 1) {
        entry.character = glyph.text.front();
        entry.glyph.text = {&entry.character, 1};
    } else if (!glyph.text.empty()) {
        entry.glyph.text = several_.emplace_back(glyph.text);
    } else {
        entry.glyph.text = {};
    }
    place(code, entry.glyph);
    return entry.glyph;
}

void GlyphStore::place(std::uint32_t code, const FontGlyph& glyph) {
    if (code >= kPageSize * kPages) {
        rare_[code] = &glyph;
        return;
    }
    Page*& page = pages_[code / kPageSize];
    if (page == nullptr) page = otherPages_.emplace_back(std::make_unique<Page>()).get();
    (*page)[code % kPageSize] = &glyph;
}

const FontGlyph* GlyphStore::findRare(std::uint32_t code) const {
    const auto found = rare_.find(code);
    return found == rare_.end() ? nullptr : found->second;
}

} // namespace quillow::pdf
