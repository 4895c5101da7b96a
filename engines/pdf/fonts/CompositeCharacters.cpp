#include "engines/pdf/fonts/CompositeCharacters.h"

#include "engines/pdf/fonts/ProgramCharacters.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

/// The collection of a CMap that maps its CIDs to Unicode: "Adobe-Japan1-UCS2".
CharacterCollection collectionOfUnicodeMap(std::string_view name) {
    constexpr std::string_view kRegistry = "Adobe-";
    constexpr std::string_view kUnicode = "-UCS2";
    if (!name.starts_with(kRegistry) || !name.ends_with(kUnicode)) return CharacterCollection::Unknown;
    name.remove_prefix(kRegistry.size());
    name.remove_suffix(std::min(kUnicode.size(), name.size()));
    return collectionOf("Adobe", name);
}

} // namespace

CompositeCharacters::CompositeCharacters(FontResources& resources, const FontFacts& facts,
                                         const CompositeEncoding& encoding)
    : resources_(resources)
    , facts_(facts)
    , encoding_(encoding)
    , collection_(encoding.collection()) {
    if (collection_ == CharacterCollection::Unknown) collection_ = collectionOfFont();
}

CharacterCollection CompositeCharacters::collectionOfFont() const {
    Document& document = resources_.document();
    const Dictionary info = document.get(facts_.descendant, "CIDSystemInfo").dictionary();
    return collectionOf(document.get(info, "Registry").string(), document.get(info, "Ordering").string());
}

EmbeddedFont* CompositeCharacters::program() {
    if (!program_) program_ = resources_.programOf(facts_.descriptor.program());
    return *program_;
}

void CompositeCharacters::readToUnicode() {
    hasReadToUnicode_ = true;
    const Object entry = resources_.document().get(facts_.dictionary, "ToUnicode");
    toUnicode_ = resources_.cmapOf(entry);
    const std::string_view name = toUnicode_ != nullptr ? toUnicode_->base() : entry.name();
    const bool isEmpty = toUnicode_ == nullptr || !toUnicode_->hasCharacters();
    isIdentity_ = isEmpty && (name.starts_with("Identity") || name.starts_with("Adobe-Identity"));
    isDoubtful_ = isIdentity_ || (toUnicode_ != nullptr && toUnicode_->isDoubtful());
    toUnicodeCollection_ = collectionOfUnicodeMap(name);
}

CharacterEvidence CompositeCharacters::find(std::uint32_t code, std::uint32_t cid, std::u32string& out) {
    if (!hasReadToUnicode_) readToUnicode();
    // A doubtful ToUnicode is believed if nothing else is known.
    const CharacterEvidence evidence = byToUnicode(code, cid, out);
    const bool isFound = evidence == CharacterEvidence::characters;
    if (isFound && !isDoubtful_ && out.size() <= kMostCharactersOfSoundGlyph) return evidence;
    std::u32string doubtful = isFound ? out : std::u32string();
    if (byEncoding(code, cid, out) || byProgram(cid, out)) return CharacterEvidence::characters;
    out.swap(doubtful);
    return isFound || !byGlyphOrder(cid, out) ? evidence : CharacterEvidence::characters;
}

CharacterEvidence CompositeCharacters::byToUnicode(std::uint32_t code, std::uint32_t cid, std::u32string& out) {
    out.clear();
    if (toUnicode_ != nullptr) toUnicode_->charactersOf(code, out);
    if (out.empty() && toUnicodeCollection_ != CharacterCollection::Unknown)
        out = unicodeOfCid(toUnicodeCollection_, cid).view();
    if (out.empty() && isIdentity_) out.assign(1, static_cast<char32_t>(code));
    return keepUsable(out, facts_.symbols);
}

bool CompositeCharacters::byEncoding(std::uint32_t code, std::uint32_t cid, std::u32string& out) {
    if (const char32_t character = encoding_.characterOf(code)) {
        out.assign(1, character);
        return keepUsable(out, facts_.symbols) == CharacterEvidence::characters;
    }
    if (collection_ == CharacterCollection::Unknown) return false;
    out = unicodeOfCid(collection_, cid).view();
    return !out.empty();
}

/// By the collection of a CID-keyed program, if only the program knows it; else by its tables.
bool CompositeCharacters::byProgram(std::uint32_t cid, std::u32string& out) {
    EmbeddedFont* const font = program();
    if (font == nullptr) return false;
    if (font->isCidKeyed() && collection_ == CharacterCollection::Unknown) {
        out = unicodeOfCid(collectionOf("Adobe", font->ordering()), cid).view();
        if (!out.empty()) return true;
    }
    return charactersOfGlyph(*font, glyphOf(cid), GlyphNameTable::Adobe, facts_.symbols, out) ==
           CharacterEvidence::characters;
}

/// Well-known fonts have the characters of ASCII in this order from glyph 3 on, and subsets keep the numbers of glyphs.
bool CompositeCharacters::byGlyphOrder(std::uint32_t cid, std::u32string& out) const {
    constexpr std::uint32_t kGlyphOfSpace = 3;
    constexpr std::uint32_t kGlyphOfTilde = kGlyphOfSpace + '~' - ' ';
    if (cid < kGlyphOfSpace || cid > kGlyphOfTilde || collection_ != CharacterCollection::Unknown) return false;
    for (const std::string_view name : {"Arial", "TimesNewRoman", "CourierNew"})
        if (facts_.name.starts_with(name)) {
            out.assign(1, U' ' + (cid - kGlyphOfSpace));
            return true;
        }
    return false;
}

/// Fonts with TrueType outlines may map CIDs to glyphs (9.7.4.2).
GlyphIndex CompositeCharacters::glyphOf(std::uint32_t cid) {
    EmbeddedFont* const font = program();
    if (font == nullptr) return 0;
    if (!hasReadGlyphMap_) {
        hasReadGlyphMap_ = true;
        Document& document = resources_.document();
        const Object map = document.get(facts_.descendant, "CIDToGIDMap");
        if (map.stream() != nullptr) glyphMap_ = document.decode(*map.stream(), glyphMapBuffer_).bytes;
    }
    if (!glyphMap_) return font->glyphOfCid(cid);
    const std::size_t at = std::size_t{cid} * 2;
    if (at + 1 >= glyphMap_->size()) return 0;
    const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>((*glyphMap_)[i]); };
    return static_cast<GlyphIndex>(byteAt(at) << 8 | byteAt(at + 1));
}

} // namespace quillow::pdf
