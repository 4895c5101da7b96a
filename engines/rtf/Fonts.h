// The font table (RTF 1.9.1, "Font Table"), as far as it tells how a font's bytes are to be read.
#pragma once

#include "engines/rtf/Charset.h"
#include "engines/rtf/Scanner.h"

#include <cstdint>
#include <string>
#include <unordered_map>

namespace quillow::rtf {

class FontTable {
public:
    explicit FontTable(CharsetPool& pool)
        : pool_(pool)
        , document_(pool.forCodePage(kWindowsLatin)) {}

    /// Forgets the fonts and the document's charset, as at the start of a document.
    void reset();

    /// Reads the rest of a \fonttbl group, closing brace included. Later entries replace earlier ones of their number.
    Scanner::Completeness read(Scanner& scanner);

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
    static constexpr std::size_t kMaxName = 64; // enough to know a symbol font by

    struct Font {
        int codePage = kNotGiven;
        int charsetNumber = kNotGiven;
        text::SymbolFontDecoder symbols = nullptr;
    };

    [[nodiscard]] const Charset* resolve(int number);
    void define(int number, Font font, const std::string& name);
    void useForDocument(int codePage);

    CharsetPool& pool_;
    const Charset* document_;
    bool hasAnsiCodePage_ = false;
    int defaultFont_ = kNotGiven;
    std::unordered_map<int, Font> fonts_;
    int latestFont_ = kNotGiven; // the latest answer of charset(); the same font is asked for again and again
    const Charset* latest_ = nullptr;
};

} // namespace quillow::rtf
