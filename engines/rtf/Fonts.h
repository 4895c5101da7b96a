// The font table (RTF 1.9.1, "Font Table"): the charset of each font.
#pragma once

#include "engines/rtf/Charset.h"
#include "engines/rtf/Scanner.h"

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
        , document_(pool.forCodePage(text::kWindowsLatin)) {}

    /// Clears the fonts and the document's charset. Call at the start of a document.
    void reset();

    enum class RawPairs { ignored, decoded };
    /// Reads the rest of a \fonttbl group, closing brace included. Later entries replace earlier ones of the same
    /// number. With RawPairs::decoded, the raw bytes of each name are read by the code page of its font, so that a
    /// brace as the second byte of a pair is not a brace.
    Scanner::Completeness read(Scanner& scanner, RawPairs rawPairs);
    /// The double-byte code pages that the fonts or the document have named.
    [[nodiscard]] std::vector<const text::CodePage*> pairPages();

    /// The charset of fonts that name none: from \ansicpg, or from \ansi, \mac, \pc or \pca. \ansicpg has precedence.
    void setAnsiCodePage(int number);
    void setDocumentCharset(int number);
    [[nodiscard]] const Charset* documentCharset() const { return document_; }

    void setDefaultFont(int number) { defaultFont_ = number; }
    /// The charset at the start of the body and after \plain.
    [[nodiscard]] const Charset* defaultCharset() { return charset(defaultFont_); }

    /// The charset of \fN; the document's if the table has no such font.
    [[nodiscard]] const Charset* charset(int font) {
        if (font != latestFont_ || latest_ == nullptr) {
            latest_ = resolve(font);
            latestFont_ = font;
        }
        return latest_;
    }

    static constexpr std::size_t kMaxFonts = 0x10000; ///< further fonts are ignored

private:
    static constexpr int kNotGiven = -1;
    static constexpr std::array kPairPages = {932, 936, 949, 950, 1361};
    static constexpr std::size_t kMaxName = 64; // enough to recognise a symbol font

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
    int latestFont_ = kNotGiven; // the latest argument of charset(), which often repeats
    const Charset* latest_ = nullptr;
};

} // namespace quillow::rtf
