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
    if (code < kPageSize) {
        firstPage_[code] = &glyph;
        return;
    }
    const std::uint32_t page = code / kPageSize;
    if (page >= kPages) {
        rare_[code] = &glyph;
        return;
    }
    if (pages_.empty()) pages_.resize(kPages);
    if (pages_[page] == nullptr) pages_[page] = std::make_unique<Page>();
    (*pages_[page])[code % kPageSize] = &glyph;
}

const FontGlyph* GlyphStore::findRare(std::uint32_t code) const {
    const auto found = rare_.find(code);
    return found == rare_.end() ? nullptr : found->second;
}

} // namespace quillow::pdf
