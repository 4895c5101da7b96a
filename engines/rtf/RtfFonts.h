// The font table (RTF 1.9.1, "Font Table"), as far as it tells how a font's bytes are to be read.
#pragma once

#include "engines/rtf/RtfCharset.h"
#include "engines/rtf/RtfScanner.h"

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillow::rtf {

class FontTable {
public:
    explicit FontTable(CharsetPool& pool)
        : pool_(pool)
        , document_(pool.forCodePage(kWindowsLatin)) {}

    /// Forgets the fonts and the document's charset, as at the start of a document.
    void reset();

    /// Reads the rest of a \fonttbl group, closing brace included. Later entries replace earlier ones of their number.
    /// In raw pairs, the names' bytes are read by the code pages of their fonts, so that a second half is no brace.
    enum class RawPairs { ignored, told };
    Scanner::Completeness read(Scanner& scanner, RawPairs rawPairs);

    /// The double-byte code pages that fonts or the document have named.
    [[nodiscard]] std::vector<const text::CodePage*> pairPages();

    /// \ansicpg and \ansi, \mac, \pc, \pca: the charset of fonts that name none. \ansicpg holds over the others.
    void setAnsiCodePage(int number);
    void setDocumentCharset(int number);
    [[nodiscard]] const Charset* documentCharset() const { return document_; }

    void setDefaultFont(int number) { defaultFont_ = number; }
    /// The charset at the start of the body and after \plain.
    [[nodiscard]] const Charset* defaultCharset() { return charset(defaultFont_); }

    /// The charset of \fN; the document's when the table has no such font.
    [[nodiscard]] const Charset* charset(int font) {
        if (font != latestFont_ || latest_ == nullptr) {
            latest_ = resolve(font);
            latestFont_ = font;
        }
        return latest_;
    }

    static constexpr std::size_t kMaxFonts = 0x10000; ///< fonts over this number are not kept

private:
    static constexpr int kNotGiven = -1;
    static constexpr std::array kPairPages = {932, 936, 949, 950, 1361};
    static constexpr std::size_t kMaxName = 64; // enough to know a symbol font by

    struct Font {
        int codePage = kNotGiven;
        int charsetNumber = kNotGiven;
        text::SymbolFontDecoder symbols = nullptr;
    };

    [[nodiscard]] const Charset* resolve(int number);
    void define(int number, Font font, const std::string& name);
    [[nodiscard]] static int codePageOf(const Font& font);
    [[nodiscard]] const text::CodePage* pairsOf(const Font& font);
    void passTrailByte(Scanner& scanner, char byte, const Font& font);
    void useForDocument(int codePage);

    CharsetPool& pool_;
    const Charset* document_;
    bool hasAnsiCodePage_ = false;
    int defaultFont_ = kNotGiven;
    std::unordered_map<int, Font> fonts_;
    std::array<bool, kPairPages.size()> sawPairPage_{};
    int latestFont_ = kNotGiven; // the latest answer of charset(); the same font is asked for again and again
    const Charset* latest_ = nullptr;
};

} // namespace quillow::rtf
