// The characters that give a style sheet its structure, found without reading the tokens between them: most rules of a sheet say
// nothing of interest.
#pragma once

#include "engines/html/css/CssTokenizer.h"

namespace quillow::html {

/// Walks over a style sheet from one of { } ( ) [ ] ; to the next. Those in strings, comments, escapes and unquoted URLs are
/// none. It agrees with CssTokenizer on where tokens begin.
class CssStructure {
public:
    CssStructure(std::string_view css, CssStrings& strings)
        : css_(css)
        , strings_(&strings) {}

    /// Goes on to the next such character and takes it; '\0' at the end.
    char next();
    /// The place of the character that was taken last, or the end.
    [[nodiscard]] std::size_t position() const { return position_; }

    /// Skips white space, comments and the marks "<!--" and "-->"; answers the place of what follows.
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
    std::size_t boundary_ = 0; ///< a place not after at_ where a token begins
    bool sawEscape_ = false;   ///< since the boundary
};

} // namespace quillow::html
