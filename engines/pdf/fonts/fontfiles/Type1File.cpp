#include "engines/pdf/fonts/fontfiles/Type1File.h"

#include "engines/pdf/fonts/fontfiles/Type1Charstring.h"
#include "engines/pdf/fonts/fontfiles/Type1Scanner.h"
#include "engines/pdf/fonts/fontfiles/Type1Sections.h"

#include <cmath>

namespace quillow::pdf {
namespace {

constexpr std::size_t kMostGlyphs = 0xFFFF;
constexpr double kUsualScale = 0.001;
/// A larger length is senseless.
constexpr double kLargestLength = 100;
constexpr int kUsualRandomBytes = 4;
/// The header comment may follow some junk.
constexpr std::size_t kHeaderWithin = 1024;
/// The clear text of a font is shorter.
constexpr std::size_t kLongestClearText = std::size_t{1} << 16;

std::optional<float> asLength(double length) {
    if (!(std::abs(length) <= kLargestLength)) return {};
    return static_cast<float>(length);
}

bool contains(std::string_view text, std::string_view word) {
    return text.find(word) != std::string_view::npos;
}

/// The elements of an entry that is an array of numbers, in brackets or braces; the wanted one, or 0.
double elementOf(std::string_view text, std::string_view key, std::size_t index) {
    Type1Scanner scanner(text);
    (void)scanner.skipBehind(key);
    (void)scanner.next();
    for (std::size_t i = 0; i < index; ++i)
        (void)scanner.next();
    return type1Number(scanner.next());
}

} // namespace

bool Type1File::isOne(std::string_view bytes) {
    const std::string_view header = bytes.substr(0, kHeaderWithin);
    return hasSegmentHeaders(bytes) || contains(header, "%!PS") || contains(header, "%!Font") ||
           contains(bytes.substr(0, kLongestClearText), "eexec");
}

Type1File::Type1File(std::string_view bytes)
    : EmbeddedFont(Kind::type1)
    , joined_(hasSegmentHeaders(bytes) ? withoutSegmentHeaders(bytes) : std::string())
    , font_(joined_.empty() ? bytes : std::string_view(joined_)) {}

const std::string& Type1File::decrypted() {
    if (!decrypted_) decrypted_ = decryptedText(font_);
    return *decrypted_;
}

/// Some producers have the encoding in the encrypted part.
const Type1Encoding& Type1File::encoding() {
    if (!encoding_) encoding_ = readType1Encoding(clearText(font_));
    if (!encoding_) encoding_ = readType1Encoding(decrypted()).value_or(Type1Encoding{});
    return *encoding_;
}

/// The dictionary CharStrings (2.4): names, each with the length of its charstring, a word, and the charstring.
const std::vector<Type1File::Glyph>& Type1File::glyphs() {
    if (!glyphs_.empty()) return glyphs_;
    glyphs_.push_back({".notdef", {}});
    Type1Scanner scanner(decrypted());
    (void)scanner.skipBehind("/CharStrings");
    std::string_view name;
    for (std::string_view token = scanner.next(); !token.empty() && token != "end"; token = scanner.next()) {
        const std::optional<int> length = name.empty() ? std::nullopt : type1Integer(token);
        if (!length || *length < 0) {
            name = token.starts_with('/') ? token.substr(1) : std::string_view();
            continue;
        }
        (void)scanner.next(); // "RD" or "-|"
        const std::string_view charstring = scanner.takeBinary(static_cast<std::size_t>(*length));
        if (name == ".notdef")
            glyphs_.front().charstring = charstring;
        else if (name.size() <= kLongestGlyphName && glyphs_.size() < kMostGlyphs)
            glyphs_.push_back({name, charstring});
        name = {};
    }
    return glyphs_;
}

std::uint32_t Type1File::glyphCount() {
    return static_cast<std::uint32_t>(glyphs().size());
}

GlyphIndex Type1File::glyphOfCode(std::uint8_t code) {
    const std::string_view name = nameOfCode(code);
    return name.empty() ? GlyphIndex{0} : glyphOfName(name);
}

std::string_view Type1File::nameOfCode(std::uint8_t code) {
    return encoding()[code];
}

GlyphIndex Type1File::glyphOfName(std::string_view name) {
    if (!glyphsByName_) glyphsByName_.emplace(glyphCount(), [this](GlyphIndex glyph) { return nameOfGlyph(glyph); });
    return glyphsByName_->find(name);
}

std::string_view Type1File::nameOfGlyph(GlyphIndex glyph) {
    return glyph < glyphs().size() ? glyphs()[glyph].name : std::string_view();
}

double Type1File::scale() {
    if (!scale_) {
        const double first = elementOf(clearText(font_), "/FontMatrix", 0);
        scale_ = first != 0 ? first : kUsualScale;
    }
    return *scale_;
}

/// 7.3: the entry lenIV.
int Type1File::randomBytes() {
    if (!randomBytes_) {
        Type1Scanner scanner(decrypted());
        (void)scanner.skipBehind("/lenIV");
        randomBytes_ = type1Integer(scanner.next()).value_or(kUsualRandomBytes);
    }
    return *randomBytes_;
}

std::optional<float> Type1File::width(GlyphIndex glyph) {
    if (glyph >= glyphs().size()) return {};
    const std::optional<double> width = widthOfType1Charstring(glyphs()[glyph].charstring, randomBytes());
    return width ? asLength(*width * scale()) : std::nullopt;
}

std::optional<float> Type1File::boxEdge(std::size_t index) {
    const double edge = elementOf(clearText(font_), "/FontBBox", index);
    return edge != 0 ? asLength(edge * scale()) : std::nullopt;
}

std::optional<float> Type1File::ascent() {
    return boxEdge(3);
}

std::optional<float> Type1File::descent() {
    return boxEdge(1);
}

} // namespace quillow::pdf
