#include "engines/pdf/fonts/SimpleCharacters.h"

#include "engines/pdf/fonts/ProgramCharacters.h"

namespace quillow::pdf {

namespace {

/// A symbolic font with fewer names that repeat codes is likely to be one of signs.
constexpr int kFewestCodeNamesOfSigns = 8;
constexpr std::string_view kNotDefined = ".notdef";

GlyphNameTable nameTableOf(const FontFacts& facts, bool isTex) {
    if (facts.standardFont == StandardFont::ZapfDingbats) return GlyphNameTable::ZapfDingbats;
    return isTex ? GlyphNameTable::Tex : GlyphNameTable::Adobe;
}

} // namespace

SimpleCharacters::SimpleCharacters(FontResources& resources, const FontFacts& facts)
    : resources_(resources)
    , facts_(facts)
    , texEncoding_(texEncodingOfFont(facts.name))
    , nameTable_(nameTableOf(facts, texEncoding_.has_value())) {}

const SimpleEncoding& SimpleCharacters::encoding() {
    if (!encoding_) encoding_.emplace(resources_.document(), facts_.dictionary.find("Encoding"));
    return *encoding_;
}

EmbeddedFont* SimpleCharacters::program() {
    if (!program_) program_ = resources_.programOf(facts_.descriptor.program());
    return *program_;
}

CharacterEvidence SimpleCharacters::find(std::uint8_t code, std::u32string& out) {
    const CharacterEvidence evidence = byToUnicode(code, out);
    const bool isFound = evidence == CharacterEvidence::characters;
    if (isFound && out.size() <= kMostCharactersOfSoundGlyph) return evidence;
    std::u32string tooLong = isFound ? out : std::u32string();
    if (byDifferences(code, out) || byBaseEncoding(code, out) || byProgram(code, out) || byKnownFont(code, out))
        return CharacterEvidence::characters;
    out.swap(tooLong);
    if (isFound || facts_.isForDrawing || (evidence != CharacterEvidence::blank && isWithoutGlyph(code)))
        return CharacterEvidence::characters;
    const bool isBlank = evidence == CharacterEvidence::blank || isBlankControl(code) || isBlankName(code);
    return isBlank ? CharacterEvidence::blank : CharacterEvidence::none;
}

/// A blank is what code 32 shows even if the producer forgot the name of its glyph.
bool SimpleCharacters::isBlankName(std::uint8_t code) {
    return code == ' ' && encoding().differenceOf(code) == kNotDefined;
}

/// Whether a code shows nothing: the encoding says so, or does not have the code, and the font is not embedded.
bool SimpleCharacters::isWithoutGlyph(std::uint8_t code) {
    if (code == ' ' || isBlankControl(code)) return false;
    const std::string_view name = encoding().differenceOf(code);
    if (name == kNotDefined) return true;
    return name.empty() && facts_.subtype != FontSubtype::type3 && !facts_.descriptor.isEmbedded();
}

CharacterEvidence SimpleCharacters::byToUnicode(std::uint8_t code, std::u32string& out) {
    if (!toUnicode_) toUnicode_ = resources_.cmapOf(facts_.dictionary.find("ToUnicode"));
    const CMap* const map = *toUnicode_;
    if (map == nullptr) return CharacterEvidence::none;
    if (map->isDoubtful() && byDifferences(code, out)) return CharacterEvidence::characters;
    map->charactersOf(code, out);
    return keepUsable(out, facts_.symbols);
}

bool SimpleCharacters::byDifferences(std::uint8_t code, std::u32string& out) {
    const std::string_view name = encoding().differenceOf(code);
    if (name.empty() || name == kNotDefined) return false;
    out = unicodeOfGlyphName(name, nameTable_).view();
    if (out.empty()) return byCodeName(name, code, out);
    // Producers that take a font of signs for one with letters write the letters' names.
    const bool isLetter = facts_.symbols != nullptr && out == charactersOf(Encoding::WinAnsi, code);
    return !isLetter || facts_.standardFont.has_value();
}

/// Names that only repeat codes say nothing but that the codes are those of the producer's encoding. In Type 3 fonts
/// that is one of TeX's, whose bitmap fonts have such names.
bool SimpleCharacters::byCodeName(std::string_view name, std::uint8_t code, std::u32string& out) {
    const std::optional<std::uint32_t> named = SimpleEncoding::codeOf(name, code);
    if (!named) return false;
    if (!codeNames_) codeNames_ = encoding().codeNames();
    if (codeNames_->count < (facts_.descriptor.isSymbolic() ? kFewestCodeNamesOfSigns : 1)) return false;
    const Encoding tex = codeNames_->isHigh ? Encoding::TexCork : Encoding::TexText;
    const Encoding usual = facts_.subtype == FontSubtype::type3 && name.front() == 'a' ? tex : Encoding::WinAnsi;
    out = charactersOf(texEncoding_.value_or(usual), static_cast<std::uint8_t>(*named));
    return !out.empty();
}

/// The encoding that the document names. The codes of Wingdings and its like are signs whatever it says.
bool SimpleCharacters::byBaseEncoding(std::uint8_t code, std::u32string& out) {
    if (!encoding().differenceOf(code).empty()) return false;
    if (facts_.symbols != nullptr && !facts_.descriptor.isNonsymbolic()) {
        out = facts_.symbols(code);
        return keepUsable(out, nullptr) == CharacterEvidence::characters;
    }
    if (!encoding().base()) return false;
    out = charactersOf(*encoding().base(), code);
    return !out.empty();
}

std::string_view SimpleCharacters::nameOf(std::uint8_t code) {
    const std::string_view name = encoding().differenceOf(code);
    if (!name.empty()) return name;
    if (encoding().base()) return glyphNameOf(*encoding().base(), code);
    return facts_.descriptor.isEmbedded() ? std::string_view() : glyphNameOf(impliedEncoding(), code);
}

GlyphIndex SimpleCharacters::glyphOf(std::uint8_t code) {
    EmbeddedFont* const font = program();
    if (font == nullptr) return 0;
    const std::string_view name = nameOf(code);
    if (name.empty()) return font->glyphOfCode(code);
    if (const GlyphIndex glyph = font->glyphOfName(name)) return glyph;
    if (const auto index = glyphIndexOfName(name)) return static_cast<GlyphIndex>(*index);
    if (font->kind() != EmbeddedFont::Kind::trueType) return 0;
    const GlyphText text = unicodeOfGlyphName(name, nameTable_);
    const GlyphIndex glyph = text.isEmpty() ? GlyphIndex{0} : font->glyphOfUnicode(text.view().front());
    return glyph != 0 ? glyph : font->glyphOfCode(code);
}

bool SimpleCharacters::byProgram(std::uint8_t code, std::u32string& out) {
    EmbeddedFont* const font = program();
    if (font == nullptr) return false;
    if (nameOf(code).empty()) {
        const std::string_view name = font->nameOfCode(code);
        out = unicodeOfGlyphName(name, nameTable_).view();
        if (keepUsable(out, facts_.symbols) == CharacterEvidence::characters) return true;
    }
    return charactersOfGlyph(*font, glyphOf(code), nameTable_, facts_.symbols, out) == CharacterEvidence::characters;
}

/// The built-in encoding of a font that is known by its name, or the one that fonts have if the document says nothing.
bool SimpleCharacters::byKnownFont(std::uint8_t code, std::u32string& out) {
    if (!encoding().differenceOf(code).empty()) return false;
    if (texEncoding_)
        out = charactersOf(*texEncoding_, code);
    else if (facts_.subtype == FontSubtype::type3)
        return false;
    else if (facts_.standardFont || program() == nullptr || !facts_.descriptor.isSymbolic() || hasCodesOfText(code))
        out = charactersOf(impliedEncoding(), code);
    return !out.empty();
}

/// Whether the codes of a symbolic TrueType font without any names are likely to be those of the usual encoding.
/// Producers that number the glyphs of a subset begin at 1 or at 33.
bool SimpleCharacters::hasCodesOfText(std::uint8_t code) {
    const std::int64_t first = resources_.document().get(facts_.dictionary, "FirstChar").integerOr(-1);
    return facts_.subtype == FontSubtype::trueType && (first == ' ' || first == 0) && code > ' ' && glyphOf(code) != 0;
}

Encoding SimpleCharacters::impliedEncoding() const {
    if (facts_.subtype == FontSubtype::trueType) return Encoding::WinAnsi;
    return facts_.standardFont ? builtInEncodingOf(*facts_.standardFont) : Encoding::Standard;
}

} // namespace quillow::pdf
