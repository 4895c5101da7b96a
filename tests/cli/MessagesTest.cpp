#include "cli/Messages.h"

#include <gtest/gtest.h>

namespace quillow::cli {
namespace {

TEST(Messages, lineHasPathReasonAndDetail) {
    EXPECT_EQ(resultLine("a.rtf", Reason::wrongType, "the content is a PDF"),
              "quillow-convert: a.rtf: wrong-type (the content is a PDF)\n");
    EXPECT_EQ(resultLine("a.rtf", Reason::ok, ""), "quillow-convert: a.rtf: ok\n");
}

TEST(Messages, pathNeverBreaksTheLineNorSteersTheTerminal) {
    EXPECT_EQ(printable("a\nb\x1B[2J\tc\x7F"), "a\\nb\\x1b[2J\\tc\\x7f");
}

TEST(Messages, otherBytesStay) {
    EXPECT_EQ(printable("caf\xC3\xA9 \xFF"), "caf\xC3\xA9 \xFF");
}

} // namespace
} // namespace quillow::cli
