#include "tests/engines/pdf/filters/Decoded.h"

#include <map>
#include <vector>

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

constexpr unsigned kClear = 256;
constexpr unsigned kEndOfData = 257;

/// Packs codes whose width grows as the standard says: with the table, one code early or not.
class CodeWriter {
public:
    explicit CodeWriter(bool earlyChange)
        : early_(earlyChange ? 1 : 0) {}

    CodeWriter& write(unsigned code) {
        for (unsigned bit = width(); bit-- > 0;)
            writeBit(code >> bit & 1);
        if (code == kClear)
            codes_ = 0;
        else
            ++codes_;
        return *this;
    }
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    /// The decoder adds its first sequence with the second code after a clear code.
    [[nodiscard]] unsigned width() const {
        const unsigned next = 258 + (codes_ > 0 ? codes_ - 1 : 0) + early_;
        return next >= 2048 ? 12 : next >= 1024 ? 11 : next >= 512 ? 10 : 9;
    }

    void writeBit(unsigned bit) {
        if (bits_++ % 8 == 0) bytes_ += '\0';
        if (bit != 0) bytes_.back() = static_cast<char>(bytes_.back() | 0x80 >> ((bits_ - 1) % 8));
    }

    unsigned early_;
    unsigned codes_ = 0; ///< since the last clear code
    std::size_t bits_ = 0;
    std::string bytes_;
};

std::string packed(const std::vector<unsigned>& codes, bool earlyChange = true) {
    CodeWriter writer(earlyChange);
    for (const unsigned code : codes)
        writer.write(code);
    return writer.bytes();
}

/// Compresses as the standard describes it. A table that is full is cleared, or kept to the end.
std::string compressed(std::string_view text, bool earlyChange, bool clears = true) {
    CodeWriter writer(earlyChange);
    writer.write(kClear);
    std::map<std::string, unsigned> table;
    std::string sequence;
    const auto codeOf = [&table](const std::string& bytes) {
        return bytes.size() == 1 ? static_cast<std::uint8_t>(bytes.front()) : table.at(bytes);
    };
    for (const char byte : text) {
        const std::string longer = sequence + byte;
        if (longer.size() == 1 || table.contains(longer)) {
            sequence = longer;
            continue;
        }
        writer.write(codeOf(sequence));
        sequence = byte;
        const auto next = static_cast<unsigned>(258 + table.size());
        if (next < 4096) table[longer] = next;
        if (next == 4093 && clears) {
            writer.write(kClear);
            table.clear();
        }
    }
    if (!sequence.empty()) writer.write(codeOf(sequence));
    return writer.write(kEndOfData).bytes();
}

Decoded decoded(std::string_view encoded, bool earlyChange = true, std::size_t limit = kNoLimit) {
    PredictorParameters parameters;
    parameters.earlyChange = earlyChange;
    return decodedBy(FilterName::lzw, encoded, parameters, limit);
}

std::string variedText(std::size_t size) {
    std::string text;
    std::uint32_t state = 1;
    while (text.size() < size) {
        state = state * 1664525 + 1013904223;
        text += static_cast<char>('a' + (state >> 24) % 7);
    }
    return text;
}

TEST(Lzw, exampleOfTheStandardIsDecoded) {
    EXPECT_EQ(decoded("\x80\x0B\x60\x50\x22\x0C\x0C\x85\x01"), complete("-----A---B"));
}

TEST(Lzw, widthOfCodesGrowsWithTheTable) {
    const std::string text = variedText(30'000);
    EXPECT_EQ(decoded(compressed(text, true), true), complete(text));
    EXPECT_EQ(decoded(compressed(text, false), false), complete(text));
}

TEST(Lzw, fullTableThatIsNotClearedStays) {
    const std::string text = variedText(60'000);
    EXPECT_EQ(decoded(compressed(text, true, false), true), complete(text));
    EXPECT_EQ(decoded(compressed(text, false, false), false), complete(text));
}

TEST(Lzw, sequenceMayBeTheOneThatIsJustBeingMade) {
    EXPECT_EQ(decoded(packed({kClear, 'a', 258, 259, kEndOfData})), complete("aaaaaa"));
}

TEST(Lzw, firstClearCodeMayBeMissing) {
    EXPECT_EQ(decoded(packed({'a', 'b', 258, kEndOfData})), complete("abab"));
}

TEST(Lzw, clearCodesMayFollowOneAnother) {
    EXPECT_EQ(decoded(packed({kClear, kClear, 'a', kClear, kClear, 'b', kEndOfData})), complete("ab"));
}

TEST(Lzw, endCodeEndsTheDataAndMayBeMissing) {
    EXPECT_EQ(decoded(packed({kClear, 'a', kEndOfData, 'b'})), complete("a"));
    EXPECT_EQ(decoded(packed({kClear, 'a', 'b'})), complete("ab"));
    EXPECT_EQ(decoded(""), complete(""));
}

TEST(Lzw, codeBeyondTheTableEndsTheData) {
    EXPECT_EQ(decoded(packed({kClear, 'a', 'b', 260, 'c'})), cut("ab"));
    EXPECT_EQ(decoded(packed({kClear, 258, 'c'})), cut("")) << "nothing came before it";
    EXPECT_EQ(decoded(packed({kClear, 'a', 'b', kClear, 258, 'c'})), cut("ab")) << "cleared";
}

TEST(Lzw, limitIsKept) {
    const std::string repeated = packed({kClear, 'a', 258, 259, kEndOfData});
    EXPECT_EQ(decoded(repeated, true, 6), complete("aaaaaa"));
    EXPECT_EQ(decoded(repeated, true, 4), tooLong("aaaa"));
    EXPECT_EQ(decoded(repeated, true, 0), tooLong(""));
}

} // namespace
} // namespace quillow::pdf
