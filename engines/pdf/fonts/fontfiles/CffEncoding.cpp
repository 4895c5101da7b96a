#include "engines/pdf/fonts/fontfiles/CffEncoding.h"

#include "engines/pdf/fonts/fontfiles/StandardNames.h"
#include "text/Bytes.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace quillow::pdf {
namespace {

using text::ByteCursor;

constexpr std::size_t kPredefinedCharsets = 3;
constexpr std::size_t kPredefinedEncodings = 2;
constexpr std::uint8_t kHasSupplement = 0x80;

/// Fills a charset from its second glyph on; the first is ".notdef", or CID 0.
class CharsetReader {
public:
    CharsetReader(std::string_view font, std::size_t offset, std::size_t glyphCount)
        : cursor_(ByteCursor(font).at(offset))
        , charset_(glyphCount) {}

    [[nodiscard]] CffCharset read() {
        const std::uint8_t format = cursor_.u8();
        while (next_ < charset_.size() && !cursor_.atEnd()) {
            const std::uint16_t first = cursor_.u16();
            if (format == 0)
                addRange(first, 0);
            else if (format == 1)
                addRange(first, cursor_.u8());
            else if (format == 2)
                addRange(first, cursor_.u16());
            else
                break;
        }
        return std::move(charset_);
    }

private:
    void addRange(std::uint16_t first, std::size_t more) {
        const std::size_t end = std::min(next_ + more + 1, charset_.size());
        for (std::uint16_t id = first; next_ < end; ++next_)
            charset_[next_] = id++;
    }

    ByteCursor cursor_;
    CffCharset charset_;
    std::size_t next_ = 1;
};

CffCharset predefinedCharset(std::span<const StringIdRun> runs, std::size_t glyphCount) {
    CffCharset charset(glyphCount);
    for (std::size_t glyph = 0; glyph < glyphCount; ++glyph)
        charset[glyph] = stringIdOf(runs, glyph);
    return charset;
}

CffEncoding predefinedEncoding(std::span<const StringIdRun> runs, const CffCharset& charset) {
    CffEncoding encoding;
    std::array<GlyphIndex, kCffStandardStrings> glyphs{};
    for (std::size_t glyph = charset.size(); glyph-- > 0;)
        if (charset[glyph] < glyphs.size()) glyphs[charset[glyph]] = static_cast<GlyphIndex>(glyph);
    for (std::size_t code = 0; code < encoding.glyphs.size(); ++code) {
        const std::uint16_t id = stringIdOf(runs, code);
        encoding.stringIds[code] = id;
        encoding.glyphs[code] = id != 0 ? glyphs[id] : GlyphIndex{0};
    }
    return encoding;
}

class EncodingReader {
public:
    EncodingReader(std::string_view font, std::size_t offset, const CffCharset& charset)
        : cursor_(ByteCursor(font).at(offset))
        , charset_(charset) {}

    [[nodiscard]] CffEncoding read() {
        const std::uint8_t format = cursor_.u8();
        const std::uint8_t count = cursor_.u8();
        for (int i = 0; i < count && !cursor_.atEnd(); ++i) {
            const std::uint8_t first = cursor_.u8();
            addRange(first, (format & ~kHasSupplement) == 1 ? cursor_.u8() : 0);
        }
        if ((format & kHasSupplement) != 0) addSupplement();
        return encoding_;
    }

private:
    /// Codes belong to glyphs in the order of glyphs, from the second on.
    void addRange(std::size_t first, std::size_t more) {
        for (std::size_t code = first; code <= first + more; ++code, ++next_)
            if (code < encoding_.glyphs.size() && next_ < charset_.size())
                encoding_.glyphs[code] = static_cast<GlyphIndex>(next_);
    }

    /// Further codes of glyphs, by name.
    void addSupplement() {
        const std::uint8_t count = cursor_.u8();
        for (int i = 0; i < count && !cursor_.atEnd(); ++i) {
            const std::uint8_t code = cursor_.u8();
            const std::uint16_t id = cursor_.u16();
            const auto glyph = std::find(charset_.begin(), charset_.end(), id);
            if (glyph == charset_.end()) continue;
            encoding_.stringIds[code] = id;
            encoding_.glyphs[code] = static_cast<GlyphIndex>(glyph - charset_.begin());
        }
    }

    ByteCursor cursor_;
    const CffCharset& charset_;
    CffEncoding encoding_;
    std::size_t next_ = 1;
};

} // namespace

CffCharset readCffCharset(std::string_view font, std::size_t offset, std::size_t glyphCount) {
    const std::array predefined{kCffIsoAdobeCharset, kCffExpertCharset, kCffExpertSubsetCharset};
    if (offset < kPredefinedCharsets) return predefinedCharset(predefined[offset], glyphCount);
    return CharsetReader(font, offset, glyphCount).read();
}

CffCharset readCffCidCharset(std::string_view font, std::size_t offset, std::size_t glyphCount) {
    if (offset >= kPredefinedCharsets) return CharsetReader(font, offset, glyphCount).read();
    CffCharset charset(glyphCount);
    std::iota(charset.begin(), charset.end(), std::uint16_t{0});
    return charset;
}

CffEncoding readCffEncoding(std::string_view font, std::size_t offset, const CffCharset& charset) {
    const std::array predefined{kCffStandardEncoding, kCffExpertEncoding};
    if (offset < kPredefinedEncodings) return predefinedEncoding(predefined[offset], charset);
    return EncodingReader(font, offset, charset).read();
}

} // namespace quillow::pdf
