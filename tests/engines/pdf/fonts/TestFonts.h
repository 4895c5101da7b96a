// Fonts in small documents.
#pragma once

#include "engines/pdf/fonts/FontCache.h"
#include "tests/engines/pdf/PdfBuilder.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf::test {

/// The body of an object that is a stream.
inline std::string streamBody(std::string_view data, std::string_view entries = "") {
    std::string body = "<</Length " + std::to_string(data.size());
    return body.append(entries).append(">>stream\n").append(data).append("\nendstream");
}

/// A document whose objects from 5 on are given; 5 is a font as a rule.
class FontDocument {
public:
    explicit FontDocument(const std::vector<std::string>& objects)
        : file_(onePagePdf("", "<<>>", objects))
        , document_(std::move(Document::open(file_).value()))
        , fonts_(*document_) {}

    [[nodiscard]] Font& font(std::uint32_t number = 5) { return fonts_.fontOf(Object::ofReference({number, 0})); }
    [[nodiscard]] FontCache& fonts() { return fonts_; }
    [[nodiscard]] Document& document() { return *document_; }

private:
    std::string file_;
    std::unique_ptr<Document> document_;
    FontCache fonts_;
};

/// The glyph of the first code of the bytes.
inline const FontGlyph& glyphOf(Font& font, std::string_view bytes) {
    const char* p = bytes.data();
    return font.next(p, p + bytes.size());
}

/// The characters of all codes of the bytes.
inline std::u32string textOf(Font& font, std::string_view bytes) {
    std::u32string text;
    const char* p = bytes.data();
    while (p != bytes.data() + bytes.size())
        text += font.next(p, bytes.data() + bytes.size()).text;
    return text;
}

} // namespace quillow::pdf::test
