// How much memory a document takes beside its own bytes, counted in what is asked for, not in what the system gives. A program
// of its own, since it replaces the global allocation functions.
#include "engines/rtf/RtfReader.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

namespace {

std::atomic<std::size_t> liveBytes = 0;
std::atomic<std::size_t> mostBytes = 0;

constexpr std::size_t kHeader = alignof(std::max_align_t); // in front of each block, to keep its size

} // namespace

void* operator new(std::size_t size) {
    auto* block = static_cast<char*>(std::malloc(size + kHeader));
    if (block == nullptr) throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(block) = size;
    const std::size_t live = liveBytes += size;
    if (live > mostBytes) mostBytes = live;
    return block + kHeader;
}

void operator delete(void* pointer) noexcept {
    if (pointer == nullptr) return;
    char* block = static_cast<char*>(pointer) - kHeader;
    liveBytes -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept {
    operator delete(pointer);
}

namespace quillow::rtf {
namespace {

constexpr std::size_t kDocument = std::size_t{2} << 20;
constexpr std::size_t kBeside = std::size_t{512} << 10; ///< tables, open groups, the first buffer

struct Memory {
    std::size_t most = 0; ///< at any time while the document was read, its text included
    std::size_t text = 0;
};

/// Reads a document of kDocument bytes that says one thing over and over.
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
    // They are gathered apart, by doubling, and put behind the text in the end.
    EXPECT_LE(memory.most, 5 * kDocument);
}

} // namespace
} // namespace quillow::rtf
