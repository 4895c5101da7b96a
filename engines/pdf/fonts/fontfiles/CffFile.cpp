#include "engines/pdf/fonts/fontfiles/CffFile.h"

#include "engines/pdf/fonts/fontfiles/CffDict.h"
#include "engines/pdf/fonts/fontfiles/StandardNames.h"
#include "text/Bytes.h"

#include <algorithm>
#include <cmath>

namespace quillow::pdf {
namespace {

using text::ByteCursor;

constexpr std::uint8_t kMajorVersion = 1;
constexpr std::size_t kHeader = 4;
/// Bytes before the header; blanks and line ends of careless producers.
constexpr std::size_t kMostJunk = 16;
constexpr double kUsualScale = 0.001;
/// A larger one is senseless.
constexpr double kLargestExtent = 100;

/// The parts with which every font begins (Technical Note 5176, 2).
struct Beginning {
    std::string_view topDict;
    CffIndex strings;
    CffIndex globalSubroutines;
};

Beginning readBeginning(std::string_view font) {
    ByteCursor cursor(font);
    if (cursor.u8() != kMajorVersion) return {};
    cursor.skip(1);
    const std::uint8_t headerSize = cursor.u8();
    if (headerSize < kHeader) return {};
    cursor = cursor.at(headerSize);
    const CffIndex names(cursor);
    const CffIndex topDicts(cursor);
    const CffIndex strings(cursor);
    const CffIndex globalSubroutines(cursor);
    return {topDicts[0], strings, globalSubroutines};
}

bool hasCharStrings(std::string_view font) {
    CffDictReader dict(readBeginning(font).topDict);
    while (dict.next())
        if (dict.operation() == CffOperator::charStrings) return dict.offset(0) < font.size();
    return false;
}

std::optional<float> scaledExtent(double extent, double scale) {
    const double scaled = extent * (scale != 0 ? scale : kUsualScale);
    if (scaled == 0 || !(std::abs(scaled) <= kLargestExtent)) return {};
    return static_cast<float>(scaled);
}

/// The bytes from the font's header on; empty if there is none.
std::string_view withoutJunk(std::string_view bytes) {
    for (std::size_t at = 0; at <= kMostJunk && at < bytes.size(); ++at)
        if (hasCharStrings(bytes.substr(at))) return bytes.substr(at);
    return {};
}

} // namespace

bool CffFile::isOne(std::string_view bytes) {
    return !withoutJunk(bytes).empty();
}

CffFile::CffFile(std::string_view bytes)
    : EmbeddedFont(Kind::cff)
    , font_(withoutJunk(bytes)) {
    const Beginning beginning = readBeginning(font_);
    strings_ = beginning.strings;
    widthSources_.font = font_;
    widthSources_.globalSubroutines = beginning.globalSubroutines;
    readTopDict(beginning.topDict);
    glyphCount_ = static_cast<std::uint32_t>(charStrings_.count());
}

void CffFile::readTopDict(std::string_view bytes) {
    CffDictReader dict(bytes);
    while (dict.next()) {
        switch (dict.operation()) {
        case CffOperator::charset: charsetOffset_ = dict.offset(0); break;
        case CffOperator::encoding: encodingOffset_ = dict.offset(0); break;
        case CffOperator::fontMatrix: widthSources_.scale = dict.operand(0); break;
        case CffOperator::fontDicts: widthSources_.fontDicts = dict.offset(0); break;
        case CffOperator::fontDictSelect: widthSources_.fontDictSelect = dict.offset(0); break;
        case CffOperator::charStrings: {
            ByteCursor cursor = ByteCursor(font_).at(dict.offset(0));
            charStrings_ = CffIndex(cursor);
            widthSources_.charStrings = charStrings_;
            break;
        }
        case CffOperator::privateDict:
            widthSources_.privateDictSize = dict.offset(0);
            widthSources_.privateDict = dict.offset(1);
            break;
        case CffOperator::fontBBox:
            lowest_ = dict.operand(1);
            highest_ = dict.operand(3);
            break;
        case CffOperator::registryOrderingSupplement:
            isCidKeyed_ = true;
            ordering_ = stringOf(dict.offset(1));
            break;
        default: break;
        }
    }
}

std::string_view CffFile::stringOf(std::size_t id) const {
    if (id < kCffStandardStrings) return cffStandardString(id);
    return soundGlyphName(strings_[id - kCffStandardStrings]);
}

const CffCharset& CffFile::charset() {
    if (!charset_)
        charset_ = isCidKeyed_ ? readCffCidCharset(font_, charsetOffset_, glyphCount_)
                               : readCffCharset(font_, charsetOffset_, glyphCount_);
    return *charset_;
}

const CffEncoding& CffFile::encoding() {
    if (!encoding_) encoding_ = isCidKeyed_ ? CffEncoding() : readCffEncoding(font_, encodingOffset_, charset());
    return *encoding_;
}

GlyphIndex CffFile::glyphOfCode(std::uint8_t code) {
    return encoding().glyphs[code];
}

std::string_view CffFile::nameOfCode(std::uint8_t code) {
    const std::uint16_t id = encoding().stringIds[code];
    if (id != 0) return stringOf(id);
    const GlyphIndex glyph = encoding().glyphs[code];
    return glyph != 0 ? nameOfGlyph(glyph) : std::string_view();
}

std::string_view CffFile::nameOfGlyph(GlyphIndex glyph) {
    if (isCidKeyed_ || glyph >= glyphCount_) return {};
    const std::uint16_t id = charset()[glyph];
    return id != 0 || glyph == 0 ? stringOf(id) : std::string_view();
}

GlyphIndex CffFile::glyphOfName(std::string_view name) {
    if (!glyphs_) glyphs_.emplace(glyphCount_, [this](GlyphIndex glyph) { return nameOfGlyph(glyph); });
    return glyphs_->find(name);
}

GlyphIndex CffFile::glyphOfCid(std::uint32_t cid) {
    if (!isCidKeyed_) return EmbeddedFont::glyphOfCid(cid);
    if (glyphsOfCids_.empty()) listGlyphsOfCids();
    return cid < glyphsOfCids_.size() ? glyphsOfCids_[cid] : GlyphIndex{0};
}

void CffFile::listGlyphsOfCids() {
    const CffCharset& cids = charset();
    const std::uint16_t last = cids.empty() ? std::uint16_t{0} : *std::max_element(cids.begin(), cids.end());
    glyphsOfCids_.resize(last + std::size_t{1});
    for (std::size_t glyph = cids.size(); glyph-- > 1;)
        glyphsOfCids_[cids[glyph]] = static_cast<GlyphIndex>(glyph);
    glyphsOfCids_[0] = 0;
}

std::optional<float> CffFile::width(GlyphIndex glyph) {
    if (!widths_) widths_.emplace(widthSources_);
    return widths_->of(glyph);
}

std::optional<float> CffFile::ascent() {
    return scaledExtent(highest_, widthSources_.scale);
}

std::optional<float> CffFile::descent() {
    return scaledExtent(lowest_, widthSources_.scale);
}

} // namespace quillow::pdf
