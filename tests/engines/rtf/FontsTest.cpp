#include "engines/rtf/Fonts.h"

#include <gtest/gtest.h>

namespace quillow::rtf {
namespace {

class Fonts : public testing::Test {
protected:
    Scanner::Completeness read(std::string_view table) {
        Scanner scanner(table);
        return fonts_.read(scanner, FontTable::RawPairs::ignored);
    }
    CharsetPool pool_;
    FontTable fonts_{pool_};
};

TEST_F(Fonts, codePageGoesBeforeCharsetAndCharsetBeforeDocument) {
    fonts_.setAnsiCodePage(1250);
    EXPECT_EQ(read("{\\f1\\fcharset204\\cpg1253 A;}{\\f2\\fcharset204 B;}{\\f3 C;}{\\f4\\fcharset1 D;}}"),
              Scanner::Completeness::whole);
    EXPECT_EQ(fonts_.charset(1), pool_.forCodePage(1253));
    EXPECT_EQ(fonts_.charset(2), pool_.forCodePage(1251));
    EXPECT_EQ(fonts_.charset(3), pool_.forCodePage(1250));
    EXPECT_EQ(fonts_.charset(4), pool_.forCodePage(1250));
    EXPECT_EQ(fonts_.charset(99), pool_.forCodePage(1250));
}

TEST_F(Fonts, documentCharsetIsTakenAlsoWhenItComesAfterTheTable) {
    (void)read("{\\f1 A;}}");
    EXPECT_EQ(fonts_.charset(1), pool_.forCodePage(1252));
    fonts_.setDocumentCharset(10000);
    EXPECT_EQ(fonts_.charset(1), pool_.forCodePage(10000));
    fonts_.setAnsiCodePage(1251);
    fonts_.setDocumentCharset(437);
    EXPECT_EQ(fonts_.charset(1), pool_.forCodePage(1251));
}

TEST_F(Fonts, symbolFontsAreKnownByCharsetOrName) {
    (void)read("{\\f1\\fcharset2 Wingdings;}{\\f2\\fcharset2 Odd;}{\\f3\\ftech Symbol;}{\\f4\\fcharset0 Symbol;}"
               "{\\f5\\fcharset2 ZapfDingbats;}}");
    EXPECT_EQ(fonts_.charset(1)->symbols(), text::wingdingsToUnicode);
    EXPECT_EQ(fonts_.charset(2)->symbols(), text::symbolToUnicode);
    EXPECT_EQ(fonts_.charset(5)->symbols(), text::zapfDingbatsToUnicode);
    EXPECT_EQ(fonts_.charset(3)->symbols(), text::symbolToUnicode);
    EXPECT_FALSE(fonts_.charset(4)->isSymbolFont());
}

TEST_F(Fonts, suffixOfTheNameCountsWhereNothingElseIsGiven) {
    (void)read("{\\f1 Arial CE;}{\\f2 Arial Cyr;}{\\f3 Arial (Thai);}{\\f4 Arial BlaCE;}{\\f5\\fcharset161 Arial Cyr;}"
               "{\\f6\\cpg1257 Arial Cyr;}{\\f7\\fcharset0 Arial Cyr;}}");
    EXPECT_EQ(fonts_.charset(1), pool_.forCodePage(1250));
    EXPECT_EQ(fonts_.charset(2), pool_.forCodePage(1251));
    EXPECT_EQ(fonts_.charset(3), pool_.forCodePage(874));
    EXPECT_EQ(fonts_.charset(4), pool_.forCodePage(1252));
    EXPECT_EQ(fonts_.charset(5), pool_.forCodePage(1253));
    EXPECT_EQ(fonts_.charset(6), pool_.forCodePage(1257));
    EXPECT_EQ(fonts_.charset(7), pool_.forCodePage(1252));
}

TEST_F(Fonts, unclosedTableKeepsWhatItHolds) {
    EXPECT_EQ(read("{\\f1\\fcharset204 A;}{\\f2\\fcharset161 B"), Scanner::Completeness::cutShort);
    EXPECT_EQ(fonts_.charset(1), pool_.forCodePage(1251));
    EXPECT_EQ(fonts_.charset(2), pool_.forCodePage(1253));
}

TEST_F(Fonts, fontsOverTheLimitAreNotKept) {
    std::string table;
    for (std::size_t i = 0; i <= FontTable::kMaxFonts; ++i)
        table += "\\f" + std::to_string(i) + "\\fcharset204;";
    (void)read(table + "}");
    EXPECT_EQ(fonts_.charset(static_cast<int>(FontTable::kMaxFonts) - 1), pool_.forCodePage(1251));
    EXPECT_EQ(fonts_.charset(static_cast<int>(FontTable::kMaxFonts)), pool_.forCodePage(1252));
}

} // namespace
} // namespace quillow::rtf
