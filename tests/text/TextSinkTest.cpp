#include "text/TextSink.h"

#include "text/Utf8.h"

#include <gtest/gtest.h>

namespace quillow::text {
namespace {

std::string finished(TextSink sink) {
    return std::move(sink).finish();
}

TEST(TextSink, controlCharactersAreDroppedButTabAndLineEnd) {
    for (char32_t c = 0; c < 0xA0; ++c) {
        const bool kept = c == '\t' || c == '\n' || (c >= 0x20 && c < 0x7F);
        std::string utf8;
        text::appendUtf8(utf8, c);
        TextSink single;
        single.append(c);
        EXPECT_EQ(single.view(), kept ? utf8 : "") << std::uint32_t{c};
        // In the middle of a run, at every position of a block.
        for (std::size_t before = 1; before < 34; ++before) {
            const std::string run(before, 'x');
            TextSink sink;
            sink.appendUtf8(run + utf8 + run);
            EXPECT_EQ(sink.view(), run + (kept ? utf8 : "") + run) << std::uint32_t{c};
        }
    }
}

TEST(TextSink, formFeedsAreKeptWhenAskedFor) {
    TextSink sink(TextSink::FormFeeds::keep);
    sink.append('\f');
    sink.appendUtf8("a\fb");
    EXPECT_EQ(sink.view(), "\fa\fb");
    TextSink other;
    other.appendUtf8("a\fb");
    EXPECT_EQ(other.view(), "ab");
}

TEST(TextSink, charactersOverC1AreKept) {
    const std::string_view text = "\u00A0¡é漢😀\u200B\u2028";
    TextSink sink;
    sink.appendUtf8(text);
    EXPECT_EQ(sink.view(), text);
    TextSink single;
    for (const char32_t c : U"\u00A0¡é漢😀\u200B\u2028")
        single.append(c);
    EXPECT_EQ(single.view(), text);
}

TEST(TextSink, severalCodePointsAreWrittenAsEachByItself) {
    constexpr std::u32string_view kOthers =
        U"\t\n\x1F~\x7F\u0080\u009F\u00A0\u07FF\u0800\uD7FF\uE000\uFEFF\uFFFD\U0001F600";
    for (const char32_t other : std::u32string(kOthers) + char32_t{0xD800} + char32_t{0x110000} + char32_t{0xFFFFFFFF})
        for (std::size_t before = 0; before < 34; ++before)
            for (const std::size_t behind : {0, 1, 15, 16, 17, 300}) {
                const std::u32string text = std::u32string(before, U'x') + other + std::u32string(behind, U'\u00E9') +
                                            std::u32string(behind, U'y') + std::u32string(behind, U'\u20AC');
                TextSink together;
                together.append(text);
                TextSink single;
                for (const char32_t c : text)
                    single.append(c);
                EXPECT_EQ(together.view(), single.view()) << std::uint32_t{other} << " behind " << before;
            }
}

TEST(TextSink, byteOrderMarksAreDroppedOnlyAtTheStart) {
    TextSink sink;
    sink.append(0xFEFF);
    sink.appendUtf8("\uFEFF\uFEFFa\uFEFF");
    sink.append(0xFEFF);
    EXPECT_EQ(sink.view(), "a\uFEFF\uFEFF");
    TextSink afterControl;
    afterControl.appendUtf8("\x01\uFEFFx");
    EXPECT_EQ(afterControl.view(), "x");
}

TEST(TextSink, surrogatesAndValuesBeyondUnicodeAreReplacementCharacters) {
    TextSink sink;
    sink.append(0xD800);
    sink.append(0xDFFF);
    sink.append(0x110000);
    EXPECT_EQ(sink.view(), "\uFFFD\uFFFD\uFFFD");
}

TEST(TextSink, asciiIsTakenAsItIs) {
    TextSink sink;
    sink.appendAscii("a b\t");
    sink.appendAscii('\n');
    EXPECT_EQ(sink.view(), "a b\t\n");
    EXPECT_EQ(sink.back(), '\n');
    EXPECT_EQ(sink.size(), 5U);
}

TEST(TextSink, whatWasWrittenCanBeTakenBack) {
    TextSink sink;
    EXPECT_TRUE(sink.empty());
    sink.appendUtf8("abcdef");
    sink.removeSuffix(2);
    EXPECT_EQ(sink.view(), "abcd");
    sink.truncate(1);
    EXPECT_EQ(sink.view(), "a");
}

TEST(TextSink, finishedTextEndsWithOneLineEnd) {
    TextSink sink;
    sink.appendUtf8("a\n\nb");
    EXPECT_EQ(finished(sink), "a\n\nb\n");
    sink.appendUtf8("\n\n\n");
    EXPECT_EQ(finished(sink), "a\n\nb\n");
}

TEST(TextSink, nothingButLineEndsFinishesAsNothing) {
    TextSink sink;
    EXPECT_EQ(finished(sink), "");
    sink.appendUtf8("\n\n");
    EXPECT_EQ(finished(sink), "");
}

} // namespace
} // namespace quillow::text
