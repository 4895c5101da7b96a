// CssStructure finds the same structure in a style sheet as the tokenizer.
#include "engines/html/css/CssStructure.h"

#include <gtest/gtest.h>

#include <string>

namespace quillow::html {
namespace {

/// The brackets, braces, parentheses and semicolons in order, as the tokenizer finds them.
std::string structureOfTokens(std::string_view css) {
    CssStrings strings;
    CssTokenizer tokens(css, strings);
    std::string out;
    for (CssToken token = tokens.next(); token.type != CssTokenType::end; token = tokens.next()) {
        switch (token.type) {
        case CssTokenType::function: out += '('; break;
        case CssTokenType::openParenthesis:
        case CssTokenType::closeParenthesis:
        case CssTokenType::openSquare:
        case CssTokenType::closeSquare:
        case CssTokenType::openCurly:
        case CssTokenType::closeCurly:
        case CssTokenType::semicolon: out += token.delimiter; break;
        default: break;
        }
    }
    return out;
}

std::string structureOf(std::string_view css) {
    CssStrings strings;
    CssStructure structure(css, strings);
    std::string out;
    for (char c = structure.next(); c != '\0'; c = structure.next())
        out += c;
    return out;
}

class CssStructureCase : public testing::TestWithParam<const char*> {};

TEST_P(CssStructureCase, isThatOfTheTokens) {
    for (const std::string_view before : {"", "x", "a{b:c;d:e}/* between */ "}) {
        const std::string css = std::string(before) + GetParam() + "{after:1;}[x](y);";
        EXPECT_EQ(structureOf(css), structureOfTokens(css)) << css;
    }
}

const char* const kSheets[] = {
    "a{b:url(x;y{z)}",
    "a{b:URL( 'x;y' )}",
    "a{b:url( \"x)y\" )}",
    "a{b:url(x\\);y)}",
    "a{b:url(",
    "a{b:u\\72l(;{)}",
    "a{b:\\75 rl(;{)}",
    "a{b:my-url(;)}",
    "a{b:#url(;)}",
    "@url(;)",
    "\\url(;)",
    "a{b:'x;}\\'y'}",
    "a{b:'x;\ny'}",
    "a{b:\"x\\\n;y\"}",
    "a{b:\"x\\41\n;y\"}",
    "a{b:\"x",
    "/* { */ a /**/ { /* } */ }",
    "/* {",
    "a / b {}",
    "a\\{b{}",
    "a\\\n{b}",
    "\\",
    "<!-- a{} -->",
    "a[b='}']{}",
    "a:not([b;c]){}",
    "a{b:calc((1px + 2px) * 3)}",
    "}}}{{{",
    "a|b{c:d||e;}[f|=g]{}",
};
INSTANTIATE_TEST_SUITE_P(Sheets, CssStructureCase, testing::ValuesIn(kSheets));

TEST(CssStructure, skipsWhatStandsForWhiteSpace) {
    CssStrings strings;
    CssStructure structure(" <!--\n/* x */-->\ta{}", strings);
    EXPECT_EQ(structure.skipBlank(), 17U);
    EXPECT_EQ(structure.next(), '{');
    EXPECT_EQ(structure.position(), 18U);
}

} // namespace
} // namespace quillow::html
