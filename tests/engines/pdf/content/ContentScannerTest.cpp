#include "engines/pdf/content/ContentScanner.h"

#include "engines/pdf/content/ContentBuffer.h"
#include "text/Ascii.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillow::pdf {
namespace {

std::string shown(const Operand& operand, const Operands& operands) {
    switch (operand.kind) {
    case Operand::Kind::number: {
        std::string digits = std::to_string(operand.number);
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.back() == '.') digits.pop_back();
        return digits;
    }
    case Operand::Kind::name: return '/' + std::string(operand.view());
    case Operand::Kind::plainString: return '(' + std::string(operand.view()) + ')';
    case Operand::Kind::escapedString: return "\\(" + std::string(operand.view()) + ')';
    case Operand::Kind::dictionary: return "<<" + std::string(operand.view()) + ">>";
    case Operand::Kind::other: return "?";
    case Operand::Kind::array: break;
    }
    std::string items = "[";
    for (const Operand& item : operands.itemsOf(operand))
        items += shown(item, operands) + ' ';
    return items + ']';
}

std::string nameOf(Operator word) {
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8)
        if ((word >> shift & 0xFF) != 0) name += static_cast<char>(word >> shift & 0xFF);
    return name;
}

/// Operands and operators of a content stream, those of one operator a line.
std::string tokensOf(std::string_view content) {
    ContentBuffer buffer;
    buffer.adopt(content);
    ContentScanner scanner(buffer.guarded());
    Operands operands;
    std::string out;
    for (;;) {
        operands.clear();
        const Operator word = scanner.next(operands);
        for (std::size_t i = 0; i < operands.size(); ++i)
            out += shown(operands[i], operands) + ' ';
        if (word == kNoOperator) return out;
        out += nameOf(word) + '|';
    }
}

struct Case {
    const char* content;
    const char* tokens;
};

TEST(PdfContentScanner, readsEachKindOfToken) {
    for (const Case& c : {
             Case{"", ""},
             Case{" \t\r\n\f", ""},
             Case{"BT ET", "BT|ET|"},
             Case{"T* ' \" f* d0", "T*|'|\"|f*|d0|"},
             Case{"1 -2 +3 .5 -.5 4. 0.25 Td", "1 -2 3 0.5 -0.5 4 0.25 Td|"},
             Case{"/F1 12 Tf", "/F1 12 Tf|"},
             Case{"/ gs", "/ gs|"},
             Case{"/A#20B/C(d)<41>Tj", "/A#20B /C (d) (A) Tj|"},
             Case{"(a(b)c)Tj", "(a(b)c) Tj|"},
             Case{"(a\\)b)Tj", "\\(a\\)b) Tj|"},
             Case{"(a\rb)Tj", "\\(a\rb) Tj|"},
             Case{"(a\nb)Tj", "(a\nb) Tj|"},
             Case{"()Tj<>Tj", "() Tj|() Tj|"},
             Case{"[(a)-120(b)<41>]TJ", "[(a) -120 (b) (A) ] TJ|"},
             Case{"[]0 d", "[] 0 d|"},
             Case{"[1 2] [3] x", "[1 2 ] [3 ] x|"},
             Case{"/P<</MCID 0/A<</B(>>)>>>>BDC", "/P <</MCID 0/A<</B(>>)>>>> BDC|"},
             Case{"/P<<>>BDC", "/P <<>> BDC|"},
             Case{"true false null M", "? ? ? M|"},
             Case{"1 % 2 ( [\n3 m", "1 3 m|"},
             Case{"1 % 2 ( [\r3 m", "1 3 m|"},
             Case{"1 0 0 RG", "1 0 0 RG|"},
         })
        EXPECT_EQ(tokensOf(c.content), c.tokens) << c.content;
}

TEST(PdfContentScanner, toleratesDamage) {
    for (const Case& c : {
             Case{"(abc", "(abc) "},
             Case{"(ab(c)", "(ab(c)) "},
             Case{"(abc\\", "\\(abc\\) "},
             Case{"<41", "(A) "},
             Case{"[(a) 1", "[(a) 1 ] "},
             Case{"[(a) 1 TJ", "[(a) 1 ] TJ|"},
             Case{"[(a) 1 ET", "[(a) 1 ] ET|"},
             Case{"[(a) 0 Tc -250 (b)]TJ", "[(a) 0 -250 (b) ] TJ|"},
             Case{"[(a)true(b)]TJ", "[(a) (b) ] TJ|"},
             Case{"[(a)[1 2](b)]TJ", "[(a) 1 2 ] (b) TJ|"},
             Case{"/N", "/N "},
             Case{"-", "-0 "},
             Case{"%", ""},
             Case{"<", "() "},
             Case{"<<", ""},
             Case{"/P<</A 1 BDC (b)Tj", "/P /A 1 BDC|(b) Tj|"}, // a dictionary without an end is not one
             Case{") ] } { > 1 w", "1 w|"},
             Case{"ab\x80z 1 m", "ab\x80z|1 m|"},
         })
        EXPECT_EQ(tokensOf(c.content), c.tokens) << c.content;
}

TEST(PdfContentScanner, readsOddNumbers) {
    for (const Case& c : {
             Case{"--5 w", "-5 w|"},
             Case{"+-5 w", "5 w|"},
             Case{"1.2.5 w", "1.25 w|"},
             Case{"4-5 w", "45 w|"},
             Case{"0.00-35 w", "0.0035 w|"},
             Case{". w", "0 w|"},
             Case{"10000000000000000000 w", "10000000000000000000 w|"},
             Case{"0.1234567890123456789012345 w", "0.123457 w|"},
             Case{"000000000000000000000007 w", "7 w|"},
             Case{"1w2 3Td", "1 w2|3 Td|"},
         })
        EXPECT_EQ(tokensOf(c.content), c.tokens) << c.content;
    const std::string endless = std::string(10'000, '9') + " w";
    EXPECT_EQ(tokensOf(endless).find("inf"), std::string::npos);
}

TEST(PdfContentScanner, decodesHexadecimalStrings) {
    for (const Case& c : {
             Case{"<4>Tj", "(@) Tj|"},
             Case{"<4142>Tj", "(AB) Tj|"},
             Case{"<41425>Tj", "(ABP) Tj|"},
             Case{"<6a6B>Tj", "(jk) Tj|"},
             Case{"<4 1>Tj", "(A) Tj|"},
             Case{"<41 42\n43>Tj", "(ABC) Tj|"},
             Case{"<x4(1/4%2)>Tj", "(AB) Tj|"},
             Case{"<:g@G`4142>Tj", "(AB) Tj|"},
             Case{"<41 42", "(AB) "},
             Case{"<4142434", "(ABC@) "},
             Case{"<4142434445464748>Tj", "(ABCDEFGH) Tj|"},
             Case{"<414243444546474849>Tj", "(ABCDEFGHI) Tj|"},
             Case{"<41424344454647484>Tj", "(ABCDEFGH@) Tj|"},
             Case{"<4142434445464748494a4B4c4D4e4F505152>Tj", "(ABCDEFGHIJKLMNOPQR) Tj|"},
             Case{"<4142434445464748 494a4B4c4D4e4F505152>Tj", "(ABCDEFGHIJKLMNOPQR) Tj|"},
             Case{"<4142434445464748494a4B4c4D4e4F505152", "(ABCDEFGHIJKLMNOPQR) "},
             Case{"[<41><4243>-1<44>]TJ<45>Tj", "[(A) (BC) -1 (D) ] TJ|(E) Tj|"},
         })
        EXPECT_EQ(tokensOf(c.content), c.tokens) << c.content;
}

/// Digits, other bytes and lengths in all sorts, decoded a digit at a time.
TEST(PdfContentScanner, decodesHexadecimalStringsAsTheirDigitsSay) {
    constexpr std::string_view kBytes = "0123456789abcdefABCDEF00112233445566778899 \n/:@GXg`({";
    std::uint32_t random = 1;
    for (int round = 0; round < 2000; ++round) {
        std::string digits;
        std::string expected;
        int high = -1;
        const std::size_t length = round % 70;
        const std::size_t choices = round % 3 == 0 ? kBytes.size() : 22;
        for (std::size_t i = 0; i < length; ++i) {
            random = random * 1664525 + 1013904223;
            digits += kBytes[(random >> 8) % choices];
            const int value = text::hexValue(digits.back());
            if (value < 0) continue;
            if (high >= 0) expected += static_cast<char>(high << 4 | value);
            high = high < 0 ? value : -1;
        }
        if (high >= 0) expected += static_cast<char>(high << 4);
        EXPECT_EQ(tokensOf('<' + digits + ">Tj"), '(' + expected + ") Tj|") << digits;
    }
}

TEST(PdfOperators, noOtherOperatorIsKnown) {
    std::size_t known = 0;
    for (Operator word = 1; word < 1U << 24; ++word) {
        if (!isKnown(word)) continue;
        ++known;
        EXPECT_NE(std::find(kOperators.begin(), kOperators.end(), nameOf(word)), kOperators.end()) << nameOf(word);
    }
    EXPECT_EQ(known, kOperators.size());
}

TEST(PdfContentScanner, countsTheBytesOfStrings) {
    const std::string content = "[<4142>1(abc)]TJ";
    ContentBuffer buffer;
    buffer.append(content);
    ContentScanner scanner(buffer.guarded());
    Operands operands;
    EXPECT_EQ(scanner.next(operands), operatorOf("TJ"));
    EXPECT_EQ(operands.stringBytes(), 7U);
    operands.clear();
    EXPECT_EQ(operands.stringBytes(), 0U);
}

TEST(PdfContentScanner, keepsTheLastOperandsOfTooMany) {
    std::string content;
    for (int i = 0; i < 200; ++i)
        content += std::to_string(i) + ' ';
    const std::string tokens = tokensOf(content + "m");
    EXPECT_TRUE(tokens.ends_with("198 199 m|"));
    EXPECT_FALSE(tokens.starts_with("0 "));
}

TEST(PdfContentScanner, limitsTheItemsOfArrays) {
    std::string content = "[";
    content.append(2 * (Operands::kMaximumItems + 5), ' ');
    for (std::size_t i = 0; i < Operands::kMaximumItems + 5; ++i)
        content[1 + 2 * i] = '1';
    content += "]TJ";
    ContentBuffer buffer;
    buffer.adopt(content);
    ContentScanner scanner(buffer.guarded());
    Operands operands;
    EXPECT_EQ(scanner.next(operands), operatorOf("TJ"));
    EXPECT_EQ(operands.itemsOf(operands.fromEnd(0)).size(), Operands::kMaximumItems);
}

} // namespace
} // namespace quillow::pdf
