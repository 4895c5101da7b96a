// Round trips: a text written as RTF in many equivalent ways comes back unchanged.
#include "engines/rtf/Reader.h"
#include "fuzz/RtfWriter.h"
#include "tests/engines/DataFiles.h"
#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace quillow::rtf {
namespace {

std::u32string randomText(std::mt19937& random) {
    constexpr char32_t kFirsts[] = {0x20,   0x20,   0x20,   0xA0,   0x370,  0x410,   0x5D0,
                                    0x0E01, 0x3041, 0x4E00, 0xAC00, 0xF900, 0x1F600, 0x20000};
    std::u32string text;
    for (std::size_t length = random() % 60; length > 0; --length) {
        const char32_t first = kFirsts[random() % std::size(kFirsts)];
        char32_t c = first + static_cast<char32_t>(random() % 0x60);
        if (random() % 12 == 0) c = U'\n';
        if (random() % 20 == 0) c = U'\t';
        if (fuzz::survivesRtf(c)) text.push_back(c);
    }
    while (!text.empty() && text.back() == U'\n')
        text.pop_back();
    return text;
}

TEST(RtfWriter, whateverIsWrittenIsReadAgain) {
    std::mt19937 random(19);
    for (int round = 0; round < 3000; ++round) {
        const std::u32string text = randomText(random);
        std::string expected;
        for (const char32_t c : text)
            text::appendUtf8(expected, c);
        if (!expected.empty()) expected += '\n';
        fuzz::RtfWriter writer([&random](unsigned count) { return static_cast<unsigned>(random() % count); });
        const std::string document = writer.write(text);

        const Extraction extraction = readRtf(test::asBytes(document), {});

        ASSERT_EQ(extraction.text, expected) << document;
        ASSERT_EQ(extraction.loss.charactersDecoded, expected.empty() ? 0 : text.size() + 1) << document;
    }
}

} // namespace
} // namespace quillow::rtf
