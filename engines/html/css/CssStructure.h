// Finds the characters that give a style sheet its structure without reading the tokens between them, because most
// rules of a sheet are of no interest.
#pragma once

#include "engines/html/css/CssTokenizer.h"

namespace quillow::html {

/// Walks over a style sheet from one structural character, { } ( ) [ ] or ;, to the next. Those in strings,
/// comments, escapes and unquoted URLs do not count. Agrees with CssTokenizer on where tokens begin.
class CssStructure {
public:
    CssStructure(std::string_view css, CssStrings& strings)
        : css_(css)
        , strings_(&strings) {}

    /// Consumes the next structural character and returns it; '\0' at the end.
    char next();
    /// The offset of the character that was consumed last, or the end of the sheet.
    [[nodiscard]] std::size_t position() const { return position_; }

    /// Skips white space, comments and the marks "<!--" and "-->". Returns the offset of what follows them.
    std::size_t skipBlank();

private:
    [[nodiscard]] bool startsWith(std::string_view text) const { return css_.substr(at_).starts_with(text); }
    char take();
    void skipComment();
    void skipString(char quote);
    void skipEscape();
    bool skipUrl();
    bool skipUrlByTokens();

    std::string_view css_;
    CssStrings* strings_;
    std::size_t at_ = 0;
    std::size_t position_ = 0;
    std::size_t boundary_ = 0; ///< the start of a token, not after at_
    bool sawEscape_ = false;   ///< whether an escape was skipped since boundary_
};

} // namespace quillow::html
