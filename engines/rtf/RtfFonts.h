// The font table (RTF 1.9.1, "Font Table"), as far as it tells how a font's bytes are to be read.
#pragma once

#include "engines/rtf/RtfCharset.h"
#include "engines/rtf/RtfScanner.h"

#include <cstdint>
#include <string>
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
        const auto index = static_cast<std::size_t>(static_cast<unsigned>(font));
        if (index >= fonts_.size()) return document_;
        if (fonts_[index].charset == nullptr) fonts_[index].charset = resolve(fonts_[index]);
        return fonts_[index].charset;
    }

    static constexpr int kMaxFont = 0xFFFF; ///< a font of a higher number is not kept

private:
    static constexpr int kNotGiven = -1;
    static constexpr std::size_t kMaxName = 64; // enough to know a symbol font by

    struct Font {
        int codePage = kNotGiven;
        int charsetNumber = kNotGiven;
        text::SymbolFontDecoder symbols = nullptr;
        const Charset* charset = nullptr; // resolved on first use
    };

    [[nodiscard]] const Charset* resolve(const Font& font);
    void define(int number, const Font& font, const std::string& name);
    void forgetResolved();

    CharsetPool& pool_;
    const Charset* document_;
    bool hasAnsiCodePage_ = false;
    int defaultFont_ = kNotGiven;
    std::vector<Font> fonts_;
};

} // namespace quillow::rtf
