// Work grows linearly with the size of the document, whatever it contains. Work is counted, not timed.
#include "engines/rtf/Interpreter.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace quillow::rtf {
namespace {

std::uint64_t workOn(std::string_view repeatedPiece, std::size_t count) {
    std::string document = "{\\rtf1 ";
    for (std::size_t i = 0; i < count; ++i)
        document += repeatedPiece;
    Source source;
    findDocument(document, source);
    const Options options;
    Interpreter interpreter(source, options);
    interpreter.run();
    return interpreter.work();
}

class RtfWork : public testing::TestWithParam<std::string_view> {};

TEST_P(RtfWork, growsLinearly) {
    const std::uint64_t once = workOn(GetParam(), 2000);
    const std::uint64_t fourTimes = workOn(GetParam(), 8000);
    constexpr std::uint64_t kConstantPart = 5000;
    EXPECT_LE(fourTimes, 4 * once + kConstantPart);
}

INSTANTIATE_TEST_SUITE_P(Hostile, RtfWork,
                         testing::Values("{", "}", "{\\upr{", "{\\upr{a}", "{\\*\\x", "{\\pict", "{\\fonttbl\\pard",
                                         "{\\field{\\fldinst ", "{\\footnote x", "{\\shptxt x", "}{\\rtf1 ",
                                         "} {\\rtf1", "\\rtf1", "\\bin9 ", "\xC3\xA9\\bin", "\\'93",
                                         "{\\listtable{\\list{\\listlevel", "{\\*\\pn{\\pntxtb", "\\u-10179?",
                                         "{\\NeXTGraphic ", "{\\info\\pard ", "{\\info\\pard\\par}", "{\\fcharset0 ",
                                         "{\\field{\\*\\fldinst EQ \\\\f("));

} // namespace
} // namespace quillow::rtf
