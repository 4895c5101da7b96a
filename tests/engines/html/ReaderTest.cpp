// The entry of the engine: reasons, the loss account, and the rules that every text keeps.
#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace quillow::html {
namespace {

TEST(HtmlReader, aDocumentWithoutBytesIsEmpty) {
    const Extraction result = readText("");
    EXPECT_EQ(result.reason, Reason::okEmpty);
    EXPECT_EQ(result.text, "");
}

TEST(HtmlReader, aPageWithNothingVisibleIsEmpty) {
    const Extraction result = readText("<title>t</title><p hidden>x</p><img src=x> <br>");
    EXPECT_EQ(result.reason, Reason::okEmpty);
    EXPECT_EQ(result.text, "");
}

TEST(HtmlReader, aTextEndsWithOneLineEnd) {
    EXPECT_EQ(readText("<p>x</p><br><br>").text, "x\n");
    EXPECT_EQ(readText("<pre>x\n\n\n</pre>").text, "x\n");
}

TEST(HtmlReader, countsCharactersAndLosses) {
    const Extraction result = readText("<meta charset=utf-8>\xC3\xA4\xFF");
    EXPECT_EQ(result.reason, Reason::ok);
    EXPECT_EQ(result.text, "\u00E4\uFFFD\n");
    EXPECT_EQ(result.loss.charactersDecoded, 22U);
    EXPECT_EQ(result.loss.charactersWithoutUnicode, 1U);
}

TEST(HtmlReader, halfACodeUnitAtTheEndIsNoCharacter) {
    EXPECT_EQ(readText(std::string_view("\xFF\xFE"
                                        "a\0b\0c",
                                        7))
                  .text,
              "ab\n");
}

TEST(HtmlReader, saysWhenTheBytesAreDone) {
    const auto readAndWipe = [](std::string html) {
        int times = 0;
        const auto wipe = [&] {
            ++times;
            std::fill(html.begin(), html.end(), '\0');
        };
        Extraction result = readHtml(std::as_bytes(std::span(html)), {}, wipe);
        return std::pair(times, result.text.value_or(""));
    };
    using Expected = std::pair<int, std::string>;
    EXPECT_EQ(readAndWipe("<p class=a>x &amp; y"), Expected(0, "x & y\n"));
    EXPECT_EQ(readAndWipe("<p class=a>x &amp; y\r\n<pre>a\rb"), Expected(1, "x & y\n\na\nb\n"));
    EXPECT_EQ(readAndWipe("<meta charset=windows-1252>x \xE4 y"), Expected(1, "x \u00E4 y\n"));
    EXPECT_EQ(readAndWipe("<frameset></frameset>\r\n<noframes>x</noframes>"), Expected(1, "x\n"));
}

TEST(HtmlReader, decodesTheDeclaredEncoding) {
    EXPECT_EQ(textOf("<meta charset=windows-1251>\xCF\xF0\xE8\xE2\xE5\xF2"), "\u041F\u0440\u0438\u0432\u0435\u0442");
}

TEST(HtmlContent, mayHoldAStrayNul) {
    EXPECT_EQ(textOf(std::string_view("<p>a\0b is text all the same", 27)), "ab is text all the same");
}

TEST(HtmlContent, mayBePlainText) {
    EXPECT_EQ(textOf("1 < 2 & 3"), "1 < 2 & 3");
}

} // namespace
} // namespace quillow::html
