// CSS Syntax Level 3, section 4: the tokens of a style sheet, one at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <string_view>

namespace quillow::html {

enum class CssTokenType : std::uint8_t {
    end,
    ident,
    function,
    atKeyword,
    hash,
    string,
    url,
    number,
    percentage,
    dimension,
    whiteSpace,
    colon,
    semicolon,
    comma,
    openSquare,
    closeSquare,
    openParenthesis,
    closeParenthesis,
    openCurly,
    closeCurly,
    delimiter,
};

struct CssToken {
    CssTokenType type = CssTokenType::end;
    char delimiter = 0;    ///< the character of a delimiter or other punctuation
    double number = 0;     ///< the value of a number, percentage or dimension
    std::string_view text; ///< a name or string with its escapes resolved, or a dimension's unit
    std::size_t start = 0; ///< offset of the token in the input
};

/// Storage for names and strings whose escapes have been resolved.
using CssStrings = std::list<std::string>;

/// A cursor over a style sheet; a copy remembers the position. Comments are skipped. `strings` must
/// outlive the tokens.
class CssTokenizer {
public:
    CssTokenizer(std::string_view input, CssStrings& strings, std::size_t position = 0)
        : input_(input)
        , position_(position)
        , strings_(&strings) {}

    [[nodiscard]] CssToken next();
    [[nodiscard]] std::size_t position() const { return position_; }
    [[nodiscard]] std::string_view input() const { return input_; }

private:
    [[nodiscard]] char at(std::size_t offset) const {
        return position_ + offset < input_.size() ? input_[position_ + offset] : '\0';
    }
    [[nodiscard]] bool startsName(std::size_t offset) const;
    [[nodiscard]] bool startsNumber() const;
    [[nodiscard]] bool isEscape(std::size_t offset) const;
    void skipComments();
    std::string_view consumeName();
    std::string_view consumeString(char quote);
    void consumeEscape(std::string& out);
    double consumeNumber();
    CssToken consumeNumeric();
    CssToken consumeIdentLike();
    CssToken consumeUrl();

    std::string_view input_;
    std::size_t position_;
    CssStrings* strings_;
};

} // namespace quillow::html
