#include "engines/pdf/explain/SvgWriter.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillow::pdf {
namespace {

/// The file's content without its first three lines and its last one.
std::string contentOf(SvgWriter svg) {
    std::string file = std::move(svg).finish(100, 50);
    for (int i = 0; i < 3; ++i)
        file.erase(0, file.find('\n') + 1);
    return file.substr(0, file.rfind("</svg>"));
}

TEST(SvgWriter, escapesWhatXmlReserves) {
    SvgWriter svg;

    svg.text({1, 2}, "<script>\"a\" & 'b'</script>", {{"fill", "\"><x"}});

    EXPECT_EQ(contentOf(std::move(svg)),
              "<text x=\"1\" y=\"2\" fill=\"&quot;&gt;&lt;x\">&lt;script&gt;&quot;a&quot; &amp; "
              "&#39;b&#39;&lt;/script&gt;</text>\n");
}

TEST(SvgWriter, replacesWhatXmlForbids) {
    SvgWriter svg;

    svg.text({0, 0}, std::string("\0\x01\x1F\x7F\xC2\x80\xEF\xBF\xBE\xEF\xBF\xBF\xED\xA0\x80\xFF", 16), {});

    const std::string content = contentOf(std::move(svg));
    std::size_t replaced = 0;
    for (std::size_t at = content.find("\uFFFD"); at != std::string::npos; at = content.find("\uFFFD", at + 1))
        ++replaced;
    EXPECT_EQ(content.find_first_of(std::string("\0\x01\x1F\x7F", 4)), std::string::npos);
    EXPECT_EQ(replaced, 11U);
}

TEST(SvgWriter, writesFiniteNumbersOnly) {
    EXPECT_EQ(SvgWriter::number(1.005F), "1");
    EXPECT_EQ(SvgWriter::number(-12.5F), "-12.5");
    EXPECT_EQ(SvgWriter::number(-0.001F), "0");
    EXPECT_EQ(SvgWriter::number(std::numeric_limits<float>::quiet_NaN()), "0");
    EXPECT_EQ(SvgWriter::number(std::numeric_limits<float>::infinity()), "1000000");
    EXPECT_EQ(SvgWriter::number(-3e30F), "-1000000");
}

TEST(SvgWriter, leavesOutElementsThatHaveNoRoom) {
    SvgWriter svg(60);
    svg.circle({1, 1}, 1);
    svg.text({0, 0}, std::string(100, 'a'));
    svg.line({0, 0}, {1, 1});

    EXPECT_EQ(svg.leftOut(), 1U);
    EXPECT_EQ(contentOf(std::move(svg)), "<circle cx=\"1\" cy=\"1\" r=\"1\"/>\n<path d=\"M0 0 1 1\"/>\n");
}

TEST(SvgWriter, showsATitleWhereTheMouseIs) {
    SvgWriter svg;

    svg.line({0, 0}, {1, 1}, "why");

    EXPECT_EQ(contentOf(std::move(svg)), "<path d=\"M0 0 1 1\"><title>why</title></path>\n");
}

TEST(SvgWriter, turnsTextIntoItsDirection) {
    SvgWriter svg;

    svg.turnedText({5, 6}, {0, -1}, "up", {}, 8);

    EXPECT_EQ(contentOf(std::move(svg)), "<text transform=\"matrix(0 -1 1 0 5 6)\" textLength=\"8\" "
                                         "lengthAdjust=\"spacingAndGlyphs\">up</text>\n");
}

} // namespace
} // namespace quillow::pdf
