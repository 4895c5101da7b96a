// Results of the tokenizer that no tree shows: comments, doctypes with their quirks flag, and the states that
// start tags cause.
#include "engines/html/parser/Tokenizer.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillow::html {
namespace {

std::string printed(const Token& token) {
    const auto id = [](bool has, std::string_view text) {
        return has ? " '" + std::string(text) + "'" : std::string(" -");
    };
    switch (token.type) {
    case TokenType::doctype:
        return "!" + std::string(token.name) + id(token.hasPublicId, token.publicId) +
               id(token.hasSystemId, token.systemId) + (token.forceQuirks ? " quirks" : "");
    case TokenType::startTag: return "<" + std::string(token.name) + (token.selfClosing ? "/>" : ">");
    case TokenType::endTag: return "</" + std::string(token.name) + ">";
    case TokenType::comment: return "(" + std::string(token.text) + ")";
    case TokenType::characters: return std::string(token.text);
    case TokenType::endOfFile: break;
    }
    return "";
}

std::string tokensFrom(Tokenizer& tokenizer) {
    Token token;
    std::string out;
    for (tokenizer.next(token); token.type != TokenType::endOfFile; tokenizer.next(token))
        out += (out.empty() ? "" : "|") + printed(token);
    return out;
}

std::string tokensOf(std::string_view html) {
    Tree tree{std::string(html)};
    Tokenizer tokenizer(tree);
    return tokensFrom(tokenizer);
}

struct TokenCase {
    const char* html;
    const char* tokens;
    friend void PrintTo(const TokenCase& tokenCase, std::ostream* out) { *out << tokenCase.html; }
};

class Tokens : public testing::TestWithParam<TokenCase> {};

TEST_P(Tokens, areTheStandards) {
    EXPECT_EQ(tokensOf(GetParam().html), GetParam().tokens) << GetParam().html;
}

constexpr TokenCase kComments[] = {
    {"<!--a-->b", "(a)|b"},
    {"<!-->b", "()|b"},
    {"<!--->b", "()|b"},
    {"<!---->b", "()|b"},
    {"<!--a--!>b", "(a)|b"},
    {"<!--a--->b", "(a-)|b"},
    {"<!---!>b-->", "(-!>b)"},
    {"<!--a-", "(a)"},
    {"<!--a--", "(a)"},
    {"<!--a--!", "(a)"},
    {"<!--a---", "(a-)"},
    {"<!--", "()"},
    {"<!--a<!-->b", "(a<!)|b"},
    {"<!a>b", "(a)|b"},
    {"<!>b", "()|b"},
    {"<?a>b", "(?a)|b"},
    {"</ a>b", "( a)|b"},
    {"</>b", "b"},
    {"<!-", "(-)"},
    {"<![CDATA[a]]>b", "([CDATA[a]])|b"},
    {"<!--a--b-->c", "(a--b)|c"},
    {"<!--a--!b-->", "(a--!b)"},
};
INSTANTIATE_TEST_SUITE_P(Comments, Tokens, testing::ValuesIn(kComments));

constexpr TokenCase kDoctypes[] = {
    {"<!DOCTYPE html>", "!html - -"},
    {"<!doctypeHTML >", "!html - -"},
    {"<!DOCTYPE>", "! - - quirks"},
    {"<!DOCTYPE html", "!html - - quirks"},
    {"<!DOCTYPE html x>y", "!html - - quirks|y"},
    {"<!DOCTYPE html PUBLIC 'a' \"b\">", "!html 'a' 'b'"},
    {"<!DOCTYPE html PUBLIC'a''b'>", "!html 'a' 'b'"},
    {"<!DOCTYPE html PUBLIC \"a\">", "!html 'a' -"},
    {"<!DOCTYPE html PUBLIC>", "!html - - quirks"},
    {"<!DOCTYPE html PUBLIC 'a>b", "!html 'a' - quirks|b"},
    {"<!DOCTYPE html PUBLIC 'a' b>c", "!html 'a' - quirks|c"},
    {"<!DOCTYPE html PUBLIC 'a' 'b>c", "!html 'a' 'b' quirks|c"},
    {"<!DOCTYPE html SYSTEM 'a' b>c", "!html - 'a'|c"},
    {"<!DOCTYPE html SYSTEM 'a' ", "!html - 'a' quirks"},
    {"<!DOCTYPE html SYSTEM>", "!html - - quirks"},
    {"<!DOCTYPE html SYSTEM 'a", "!html - 'a' quirks"},
};
INSTANTIATE_TEST_SUITE_P(Doctypes, Tokens, testing::ValuesIn(kDoctypes));

TEST(Tokenizer, onlyTheStartTagsOwnEndTagEndsItsText) {
    Tree tree(std::string("<X>a</Y></x-></X b=c>&amp;"));
    Tokenizer tokenizer(tree);
    Token token;
    tokenizer.next(token);
    tokenizer.switchTo(Tokenizer::State::rawtext);
    EXPECT_EQ(tokensFrom(tokenizer), "a</Y></x->|</x>|&");
}

TEST(Tokenizer, textWithoutAStartTagHasNoEndTag) {
    Tree tree(std::string("a&amp;</></b>"));
    Tokenizer tokenizer(tree);
    tokenizer.switchTo(Tokenizer::State::rcdata);
    EXPECT_EQ(tokensFrom(tokenizer), "a&</></b>");
}

TEST(Tokenizer, cdataSectionsAreSectionsOnlyWhereAllowed) {
    Tree tree(std::string("<![CDATA[a<b]]]>c"));
    Tokenizer tokenizer(tree);
    tokenizer.allowCdata(true);
    EXPECT_EQ(tokensFrom(tokenizer), "a<b]|c");
}

} // namespace
} // namespace quillow::html
