// How much memory a document uses besides its own bytes.
#include "engines/rtf/Reader.h"
#include "tests/engines/CountedMemory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace quillow::rtf {
namespace {

using test::liveBytes;
using test::mostBytes;

constexpr std::size_t kDocument = std::size_t{2} << 20;
constexpr std::size_t kBeside = std::size_t{512} << 10; ///< tables, open groups, the first buffer

struct Memory {
    std::size_t most = 0; ///< peak while the document was read, with its text
    std::size_t text = 0;
};

/// Reads a document of kDocument bytes that repeats one piece.
Memory memoryOf(std::string_view start, std::string_view repeated) {
    std::string document(start);
    document.reserve(kDocument + repeated.size());
    while (document.size() < kDocument)
        document += repeated;
    const std::size_t before = liveBytes;
    mostBytes = before;
    const Extraction extraction = readRtf(std::as_bytes(std::span(document)), {});
    return {mostBytes - before, extraction.text ? extraction.text->size() : 0};
}

TEST(RtfMemory, plainTextIsHeldOnce) {
    const Memory memory = memoryOf("{\\rtf1 ", "The quick brown fox jumps over the lazy dog.\\par\r\n");
    EXPECT_GT(memory.text, kDocument * 3 / 4);
    EXPECT_LE(memory.most, kDocument + kDocument / 16 + kBeside);
}

TEST(RtfMemory, textThatGrowsOnItsWayIsHeldOnce) {
    const Memory memory = memoryOf("{\\rtf1{\\fonttbl{\\f0\\fcharset204 A;}}\\f0 ", "\xC2\xF1\xE5 \xEB\xFE\xE4\xE8. ");
    EXPECT_GT(memory.text, kDocument * 3 / 2);
    EXPECT_LE(memory.most, memory.text + memory.text / 8 + kBeside);
}

TEST(RtfMemory, dataTakesNone) {
    EXPECT_LE(memoryOf("{\\rtf1 a{\\pict ", "0123456789abcdef\r\n").most, kBeside);
    EXPECT_LE(memoryOf("{\\rtf1 a", "{\\*\\q {b}c}").most, kBeside);
    EXPECT_LE(memoryOf("{\\rtf1 a", "\\b1\\fs24\\qqq").most, kBeside);
}

TEST(RtfMemory, openGroupsAreBounded) {
    for (const std::string_view opening :
         {"{", "{\\b ", "{\\footnote ", "{\\field ", "{\\field{\\fldinst ", "{\\shptxt "})
        EXPECT_LE(memoryOf("{\\rtf1 a", opening).most, kBeside) << opening;
}

TEST(RtfMemory, notesAreBounded) {
    const Memory memory = memoryOf("{\\rtf1 ", "a{\\footnote This is what the note says, at some length.}");
    EXPECT_GT(memory.text, kDocument / 2);
    // Notes are collected in a buffer that grows by doubling, and are appended to the text at the end.
    EXPECT_LE(memory.most, 5 * kDocument);
}

} // namespace
} // namespace quillow::rtf
