// The user guide as it was built, read by our own engine.
#include "engines/Extract.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <span>
#include <string>

namespace quillow {
namespace {

std::string guideBytes() {
    std::ifstream file(QUILLOW_BINARY_DIR "/share/quillow/Quillow User Guide.pdf", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(UserGuide, isAPdfWithItsHeadingsInOrder) {
    const std::string bytes = guideBytes();
    const Extraction guide = extract(std::as_bytes(std::span(bytes)), DocumentKind::pdf);
    ASSERT_EQ(guide.reason, Reason::ok) << guide.detail;
    EXPECT_GE(guide.pages, 2U);
    EXPECT_EQ(guide.loss.charactersWithoutUnicode, 0U);
    std::size_t at = 0;
    for (const char* heading :
         {"Quillow User Guide", "Converting documents", "The destination folder", "The message log", "Preferences",
          "Looking for updates", "On the command line", "When something goes wrong"}) {
        const std::string line = std::string("\n") + heading + "\n";
        const std::size_t found = ("\n" + *guide.text).find(line, at);
        ASSERT_NE(found, std::string::npos) << heading;
        at = found;
    }
}

TEST(UserGuide, tellsNoTimeOfItsMaking) {
    EXPECT_NE(guideBytes().find("/CreationDate (D:20260101000000"), std::string::npos);
}

} // namespace
} // namespace quillow
