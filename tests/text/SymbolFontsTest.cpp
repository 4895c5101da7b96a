#include "text/SymbolFonts.h"

#include <gtest/gtest.h>

namespace quillow::text {
namespace {

TEST(SymbolFonts, symbolHasGreekAndMathematics) {
    EXPECT_EQ(symbolToUnicode(0x61), U'α');
    EXPECT_EQ(symbolToUnicode(0x57), U'Ω');
    EXPECT_EQ(symbolToUnicode(0x22), U'∀');
    EXPECT_EQ(symbolToUnicode(0xB7), U'•');
    EXPECT_EQ(symbolToUnicode(0xA0), U'€');
    EXPECT_EQ(symbolToUnicode(0xAE), U'→');
    EXPECT_EQ(symbolToUnicode(0xF2), U'∫');
    EXPECT_EQ(symbolToUnicode(0x20), U' ');
}

TEST(SymbolFonts, wingdingsHaveTheirSigns) {
    EXPECT_EQ(wingdingsToUnicode(0xFC), U'✓');
    EXPECT_EQ(wingdingsToUnicode(0x4A), U'☺');
    EXPECT_EQ(wingdingsToUnicode(0x28), U'🕿');
    EXPECT_EQ(wingdings2ToUnicode(0x52), U'☑');
    EXPECT_EQ(wingdings3ToUnicode(0x70), U'▲');
    EXPECT_EQ(webdingsToUnicode(0x61), U'✔');
    EXPECT_EQ(webdingsToUnicode(0xFC), U'🌍');
}

TEST(SymbolFonts, wingdingsListBulletsAndTypedArrowsArePlainShapes) {
    EXPECT_EQ(wingdingsToUnicode(0x6C), U'●');
    EXPECT_EQ(wingdingsToUnicode(0x6E), U'■');
    EXPECT_EQ(wingdingsToUnicode(0x6F), U'□');
    EXPECT_EQ(wingdingsToUnicode(0xA7), U'▪');
    EXPECT_EQ(wingdingsToUnicode(0xA8), U'◻');
    EXPECT_EQ(wingdingsToUnicode(0xD8), U'➢');
    EXPECT_EQ(wingdingsToUnicode(0xDF), U'←');
    EXPECT_EQ(wingdingsToUnicode(0xE0), U'→');
}

TEST(SymbolFonts, zapfDingbatsHaveTheirSigns) {
    EXPECT_EQ(zapfDingbatsToUnicode(0x21), U'✁');
    EXPECT_EQ(zapfDingbatsToUnicode(0x25), U'☎');
    EXPECT_EQ(zapfDingbatsToUnicode(0x33), U'✓');
    EXPECT_EQ(zapfDingbatsToUnicode(0x48), U'★');
    EXPECT_EQ(zapfDingbatsToUnicode(0x6C), U'●');
    EXPECT_EQ(zapfDingbatsToUnicode(0x7E), U'❞');
    EXPECT_EQ(zapfDingbatsToUnicode(0x80), U'❨');
    EXPECT_EQ(zapfDingbatsToUnicode(0xAB), U'♠');
    EXPECT_EQ(zapfDingbatsToUnicode(0xAC), U'①');
    EXPECT_EQ(zapfDingbatsToUnicode(0xD5), U'→');
    EXPECT_EQ(zapfDingbatsToUnicode(0xFE), U'➾');
    EXPECT_EQ(zapfDingbatsToUnicode(0xF0), char32_t{0xFFFD});
}

TEST(SymbolFonts, bytesWithoutSignAreReplacementCharacters) {
    for (const SymbolFontDecoder decoder : {symbolToUnicode, wingdingsToUnicode, wingdings2ToUnicode,
                                            wingdings3ToUnicode, webdingsToUnicode, zapfDingbatsToUnicode}) {
        EXPECT_EQ(decoder(0x00), char32_t{0xFFFD});
        EXPECT_EQ(decoder(0x1F), char32_t{0xFFFD});
        EXPECT_EQ(decoder(0x7F) == 0xFFFD, decoder != wingdingsToUnicode);
        for (unsigned byte = 0; byte < 0x100; ++byte) {
            const char32_t c = decoder(static_cast<std::uint8_t>(byte));
            EXPECT_TRUE(c <= 0x10FFFF && c >= 0x20 && !(c >= 0xE000 && c <= 0xF8FF)) << byte;
        }
    }
    EXPECT_EQ(symbolToUnicode(0xF0), char32_t{0xFFFD});
    EXPECT_EQ(wingdingsToUnicode(0xFF), char32_t{0xFFFD});
}

TEST(SymbolFonts, fontNamesFindTheirDecoderInAnyCase) {
    EXPECT_EQ(symbolFontDecoder("Symbol"), symbolToUnicode);
    EXPECT_EQ(symbolFontDecoder("WINGDINGS"), wingdingsToUnicode);
    EXPECT_EQ(symbolFontDecoder("Wingdings 2"), wingdings2ToUnicode);
    EXPECT_EQ(symbolFontDecoder("wingdings 3"), wingdings3ToUnicode);
    EXPECT_EQ(symbolFontDecoder("Webdings"), webdingsToUnicode);
    EXPECT_EQ(symbolFontDecoder("ZapfDingbats"), zapfDingbatsToUnicode);
    EXPECT_EQ(symbolFontDecoder("Zapf Dingbats"), zapfDingbatsToUnicode);
    EXPECT_EQ(symbolFontDecoder("Monotype Sorts"), zapfDingbatsToUnicode);
    EXPECT_EQ(symbolFontDecoder("Arial"), nullptr);
    EXPECT_EQ(symbolFontDecoder(""), nullptr);
    EXPECT_EQ(symbolFontDecoder("Wingdings 22"), nullptr);
}

} // namespace
} // namespace quillow::text
