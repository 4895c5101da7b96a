// Base64 decoding: the white space that is skipped. tests/util/Base64Test.cpp has the rules for the rest of the text.
#include "base/Base64.h"

#include <gtest/gtest.h>

namespace quillow {
namespace {

TEST(BytesFromBase64, lineEndsAreSkippedEverywhere) {
    for (const Base64Space space : {Base64Space::lineEnds, Base64Space::all})
        EXPECT_EQ(bytesFromBase64("\r\nZ\nm9v\r\nYg=\n=\n", space), QByteArray("foob"));
}

TEST(BytesFromBase64, blanksAndTabsAreSkippedOnlyIfAllWhiteSpaceIs) {
    for (const char* text : {"Zm9v YmFy", "\tZm9vYmFy", "Zm9vYmF y"}) {
        EXPECT_EQ(bytesFromBase64(text, Base64Space::all), QByteArray("foobar")) << text;
        EXPECT_FALSE(bytesFromBase64(text, Base64Space::lineEnds)) << text;
    }
}

TEST(BytesFromBase64, otherSpacesAreNeverSkipped) {
    for (const char* text : {"Zm9v\f", "Zm9v\v", "Zm9v\xA0"})
        EXPECT_FALSE(bytesFromBase64(text, Base64Space::all)) << text;
}

} // namespace
} // namespace quillow
