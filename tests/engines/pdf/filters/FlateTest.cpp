#include "tests/engines/pdf/filters/Decoded.h"

#include <zlib.h>

#include <stdexcept>

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

std::string compressed(const std::string& text) {
    std::string out(compressBound(text.size()), '\0');
    uLongf size = out.size();
    if (compress(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(text.data()),
                 text.size()) != Z_OK)
        throw std::runtime_error("compress");
    out.resize(size);
    return out;
}

Decoded decoded(std::string_view encoded, std::size_t limit = kNoLimit) {
    return decodedBy(FilterName::flate, encoded, {}, limit);
}

/// Text that does not compress to nothing.
std::string numbers(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::to_string(i * 7919 % 10007) + " Tj\n";
    return text;
}

TEST(Flate, soundDataIsDecoded) {
    const std::string text = numbers(5000);
    EXPECT_EQ(decoded(compressed(text)), complete(text));
    EXPECT_EQ(decoded(compressed("")), complete(""));
    EXPECT_EQ(decoded(""), complete(""));
}

TEST(Flate, dataMayGrowAThousandfold) {
    const std::string text(3'000'000, 'x');
    EXPECT_EQ(decoded(compressed(text)), complete(text));
}

TEST(Flate, wrongOrMissingChecksumChangesNothing) {
    const std::string text = numbers(100);
    std::string wrong = compressed(text);
    wrong.back() ^= 1;
    EXPECT_EQ(decoded(wrong), complete(text));
    EXPECT_EQ(decoded(wrong.substr(0, wrong.size() - 4)), complete(text));
    EXPECT_EQ(decoded(wrong.substr(0, wrong.size() - 2)), complete(text));
}

TEST(Flate, bytesBehindTheEndChangeNothing) {
    const std::string text = numbers(100);
    EXPECT_EQ(decoded(compressed(text) + "\r\nendstream"), complete(text));
}

TEST(Flate, headerMayBeMissingOrWrongOrBehindALineEnd) {
    const std::string text = numbers(100);
    const std::string whole = compressed(text);
    const std::string raw = whole.substr(2);
    EXPECT_EQ(decoded(raw), complete(text));
    EXPECT_EQ(decoded("\x12\x34" + raw), complete(text));
    EXPECT_EQ(decoded("\n" + whole), complete(text));
    EXPECT_EQ(decoded("\r\n" + whole), complete(text));
}

TEST(Flate, dataIsKeptUpToItsBreak) {
    const std::string text = numbers(5000);
    const std::string whole = compressed(text);
    const Decoded half = decoded(whole.substr(0, whole.size() / 2));
    EXPECT_EQ(half.decoding, Decoding::cut);
    EXPECT_GT(half.bytes.size(), text.size() / 3);
    EXPECT_TRUE(text.starts_with(half.bytes));
}

TEST(Flate, dataIsKeptUpToABlockThatCannotBe) {
    EXPECT_EQ(decoded("\x78\x9C"
                      "\x00\x04\x00\xFB\xFFtext\x07"s), // a stored block, and one of the reserved type
              cut("text"));
}

TEST(Flate, cutDataWithoutSoundHeaderIsKeptToo) {
    const std::string text = numbers(5000);
    const std::string whole = compressed(text);
    const std::string half = whole.substr(2, whole.size() / 2);
    EXPECT_EQ(decoded(half), decoded(whole.substr(0, 2 + half.size())));
    EXPECT_EQ(decoded("\x12\x34" + half), decoded(half));
}

TEST(Flate, whatIsNoFlateDataGivesNothing) {
    EXPECT_EQ(decoded("\xFF\xFF\xFF\xFF\xFF\xFF"), cut(""));
    EXPECT_EQ(decoded("\x78"), cut(""));
    EXPECT_EQ(decoded("\x78\x9C"), cut(""));
}

TEST(Flate, limitIsKept) {
    const std::string text = numbers(5000);
    const std::string whole = compressed(text);
    EXPECT_EQ(decoded(whole, text.size()), complete(text));
    EXPECT_EQ(decoded(whole, text.size() - 1), tooLong(text.substr(0, text.size() - 1)));
    EXPECT_EQ(decoded(whole, 1), tooLong(text.substr(0, 1)));
    EXPECT_EQ(decoded(whole, 0), tooLong(""));
    EXPECT_EQ(decoded(whole.substr(2), 10), tooLong(text.substr(0, 10)));
}

TEST(Flate, memoryGrowsWithTheDataAndNotWithTheLimit) {
    text::ByteBuffer out;
    FlateDecoder decoder;
    ASSERT_EQ(decoder.decode(compressed("short"), kNoLimit, out), Decoding::complete);
    EXPECT_LT(out.capacity(), 10'000U);
    ASSERT_EQ(decoder.decode("\xFF\xFF\xFF\xFF", kNoLimit, out), Decoding::cut);
    EXPECT_LT(out.capacity(), 20'000U);
}

TEST(Flate, decoderIsUsedAgainAfterDamage) {
    text::ByteBuffer out;
    FlateDecoder decoder;
    ASSERT_EQ(decoder.decode("\x78\x9C\xFF", kNoLimit, out), Decoding::cut);
    ASSERT_EQ(decoder.decode(compressed("text"), kNoLimit, out), Decoding::complete);
    EXPECT_EQ(out.view(), "text");
}

} // namespace
} // namespace quillow::pdf
