// The block scans agree with the byte-by-byte scans at every distance from a block's edge.
#include "text/ByteScan.h"

#include <gtest/gtest.h>

#include <string>

namespace quillow::text {
namespace {

/// Checks texts of every length up to a little over three blocks, with one or two of the interesting bytes at
/// every place.
template <typename Check>
void forEachText(std::string_view interesting, Check check) {
    for (std::size_t length = 0; length < 52; ++length) {
        const std::string plain(length, 'x');
        check(plain);
        for (std::size_t at = 0; at < length; ++at)
            for (const char c : interesting) {
                std::string text = plain;
                text[at] = c;
                check(text);
                if (at + 1 < length) text[at + 1] = interesting[at % interesting.size()];
                check(text);
                if (at + 19 < length) text[at + 19] = ' ';
                check(text);
            }
    }
}

TEST(ByteScan, findsTheFirstOfSeveralBytes) {
    forEachText(std::string_view("<&\0\xFF>", 5), [](std::string_view text) {
        for (std::size_t from = 0; from <= text.size(); from += 7) {
            ASSERT_EQ((findFirstOf<'<', '&', '\0'>(text, from)), (findFirstOfPortable<'<', '&', '\0'>(text, from)));
            ASSERT_EQ((findFirstOf<'\xFF'>(text, from)), (findFirstOfPortable<'\xFF'>(text, from)));
        }
    });
    EXPECT_EQ((findFirstOf<'<', '&'>("a&<", 0)), 1U);
    EXPECT_EQ((findFirstOf<'<'>("abc", 3)), 3U);
}

TEST(ByteScan, skipsWhiteSpace) {
    for (std::size_t length = 0; length < 52; ++length)
        for (const char c : std::string_view("x\v\x1F\0\x80", 5))
            for (std::size_t at = 0; at <= length; ++at) {
                std::string text;
                for (std::size_t i = 0; i < length; ++i)
                    text += " \t\n\f\r"[i % 5];
                text.insert(at, 1, c);
                ASSERT_EQ(skipBlanks(text, 0), at);
                ASSERT_EQ(skipBlanks(text, at), at);
                ASSERT_EQ(skipBlanksPortable(text, 0), at);
            }
}

TEST(ByteScan, findsWhiteSpace) {
    forEachText(" \n\t\v\r\f", [](std::string_view text) {
        for (std::size_t from = 0; from <= text.size(); ++from)
            ASSERT_EQ(findBlank(text, from), findBlankPortable(text, from)) << testing::PrintToString(text);
    });
    EXPECT_EQ(findBlank("one\v two", 0), 4U);
    EXPECT_EQ(findBlank("one two three", 4), 7U);
    EXPECT_EQ(findBlank("one two three", 8), 13U);
}

TEST(ByteScan, endsAtWhiteSpaceThatIsMoreThanOneSpaceBetweenWords) {
    forEachText(" \n\t\v\r", [](std::string_view text) {
        for (std::size_t from = 0; from <= text.size(); from += 5)
            ASSERT_EQ(findBlankRun(text, from), findBlankRunPortable(text, from)) << testing::PrintToString(text);
    });
    EXPECT_EQ(findBlankRun("one two  three", 0), 7U);
    EXPECT_EQ(findBlankRun("one two\nthree", 0), 7U);
    EXPECT_EQ(findBlankRun("one two ", 0), 7U);
    EXPECT_EQ(findBlankRun("one two three four five six seven", 0), 33U);
}

TEST(ByteScan, countsBinaryBytes) {
    forEachText(std::string_view("\0\x08\x0B\x1B\x1C\x1F\t\n\x7F\xC2", 10), [](std::string_view text) {
        ASSERT_EQ(countBinaryBytes(text), countBinaryBytesPortable(text)) << testing::PrintToString(text);
    });
    EXPECT_EQ(countBinaryBytes(std::string_view("\0\x01 \t\n\x1B\x1F\x80", 8)), 3U);
}

} // namespace
} // namespace quillow::text
