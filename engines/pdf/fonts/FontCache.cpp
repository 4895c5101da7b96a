#include "engines/pdf/fonts/FontCache.h"

#include "engines/pdf/fonts/CompositeFont.h"
#include "engines/pdf/fonts/SimpleFont.h"

#include <unordered_map>
#include <vector>

namespace quillow::pdf {

struct FontCache::State {
    explicit State(Document& document)
        : resources(document) {}

    [[nodiscard]] Font& make(const Dictionary& dictionary);
    [[nodiscard]] Font& fontOfDictionary(const Dictionary& dictionary);

    FontResources resources;
    std::vector<std::unique_ptr<Font>> fonts;
    std::unordered_map<std::uint32_t, Font*> byObject;
    std::unordered_map<const DictionaryEntry*, Font*>
        byEntries;              ///< a dictionary is parsed once, so its place is its identity
    Font* lastResort = nullptr; ///< for what is no font
};

FontCache::FontCache(Document& document)
    : state_(std::make_unique<State>(document)) {}

FontCache::~FontCache() = default;

Font& FontCache::fontOf(const Object& entry) {
    const std::uint32_t number = entry.reference().number;
    if (number != 0) {
        const auto known = state_->byObject.find(number);
        if (known != state_->byObject.end()) return *known->second;
    }
    Font& font = state_->fontOfDictionary(state_->resources.document().resolve(entry).dictionary());
    if (number != 0) state_->byObject.emplace(number, &font);
    return font;
}

double FontCache::usedShare() const {
    return static_cast<double>(state_->fonts.size()) / static_cast<double>(kMaximumFonts);
}

Font& FontCache::State::fontOfDictionary(const Dictionary& dictionary) {
    if (dictionary.empty() || fonts.size() >= kMaximumFonts) {
        if (lastResort == nullptr) lastResort = &make(Dictionary());
        return *lastResort;
    }
    Font*& font = byEntries[dictionary.entries().data()];
    if (font == nullptr) font = &make(dictionary);
    return *font;
}

Font& FontCache::State::make(const Dictionary& dictionary) {
    const FontFacts facts(resources.document(), dictionary);
    const auto number = static_cast<std::uint32_t>(fonts.size());
    if (facts.subtype == FontSubtype::composite)
        fonts.push_back(std::make_unique<CompositeFont>(resources, facts, number));
    else
        fonts.push_back(std::make_unique<SimpleFont>(resources, facts, number));
    return *fonts.back();
}

} // namespace quillow::pdf
