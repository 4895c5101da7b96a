#include "engines/rtf/Fields.h"

#include <gtest/gtest.h>

namespace quillow::rtf {
namespace {

using Kind = FieldInstruction::Kind;

struct InstructionCase {
    std::string_view instruction;
    Kind kind;
    std::string_view text;
};

TEST(Fields, instructionsGiveTheirText) {
    constexpr InstructionCase kCases[] = {
        {" SYMBOL 183 \\f \"Symbol\" \\s 10 ", Kind::character, "\u2022"},
        {"symbol 0xB7 \\f Symbol", Kind::character, "\u2022"},
        {"SYMBOL 61692 \\f Wingdings", Kind::character, "\u2713"},
        {"SYMBOL 128 \\a", Kind::character, "\u20AC"},
        {"SYMBOL 233 \\u", Kind::character, "\u00E9"},
        {"SYMBOL x", Kind::other, ""},
        {"SYMBOL", Kind::other, ""},
        {"EQ \\o\\ad(\\s\\up 9(reading),base)", Kind::text, "base"},
        {"EQ \\* jc2 \\* \"Font:X\" \\* hps10 \\o (\\s\\up 9(a,b),base)", Kind::text, "base"},
        {"EQ \\o\\ad(\\s\\up 9(r);a\\,b)", Kind::text, "a,b"},
        {"EQ \\o(\\s\\up 9(only),)", Kind::text, "only"},
        {"EQ \\s\\do5(2)", Kind::text, "2"},
        {"EQ \\f(1,2)", Kind::text, "1/2"},
        {"eq \\l(a,b;c)\\r(3,x)\\d\\fo10()", Kind::text, "a,b;c3x"},
        {"EQ \\b\\bc\\{(f(x,y)\\,\\f(\\s\\up 8(n),m))", Kind::text, "f(x,y),n/m"},
        {"EQ \\* jc2 \\x(x)", Kind::text, "x"},
        {"EQ \\b\\lc\\\u27E8\\rc\\\u27E9(x)", Kind::text, "x"},
        {"EQ (\\jc\\\u27E8x", Kind::text, "(x"},
        {"EQ \\f(", Kind::other, ""},
        {"EQ ) ) \\", Kind::other, ""},
        {"GOTOBUTTON _Toc1  3 ", Kind::text, "3"},
        {"MACROBUTTON NoMacro [Click here] \\* MERGEFORMAT", Kind::text, "[Click here]"},
        {"MACROBUTTON \\* MERGEFORMAT", Kind::other, ""},
        {"GOTOBUTTON", Kind::other, ""},
        {"EQ \\o", Kind::other, ""},
        {"HYPERLINK \"http://a.example/b c\" \\o \"tip\" \\t \"_blank\"", Kind::link, "http://a.example/b c"},
        {"HYPERLINK http://a.example/", Kind::link, "http://a.example/"},
        {"HYPERLINK \\l \"place\"", Kind::link, "#place"},
        {"HYPERLINK \"C:\\\\x\" \\l \"y\"", Kind::link, "C:\\x#y"},
        {"HYPERLINK", Kind::other, ""},
        {"PAGE \\* MERGEFORMAT", Kind::other, ""},
        {"", Kind::other, ""},
    };
    for (const InstructionCase& instructionCase : kCases) {
        const FieldInstruction read = readFieldInstruction(instructionCase.instruction);
        EXPECT_EQ(read.kind, instructionCase.kind) << instructionCase.instruction;
        EXPECT_EQ(read.text, instructionCase.text) << instructionCase.instruction;
    }
}

} // namespace
} // namespace quillow::rtf
