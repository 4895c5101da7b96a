#include "tests/engines/pdf/filters/Decoded.h"

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

constexpr int kTiff = 2;
constexpr int kPngUp = 12;

PredictorParameters parameters(int predictor, int colors, int bits, int columns) {
    PredictorParameters result;
    result.predictor = predictor;
    result.colors = colors;
    result.bitsPerComponent = bits;
    result.columns = columns;
    return result;
}

Decoded undone(std::string_view stored, const PredictorParameters& with, std::size_t limit = kNoLimit) {
    text::ByteBuffer out;
    Decoded decoded;
    decoded.decoding = undoPredictor(stored, with, limit, out);
    decoded.bytes = out.view();
    return decoded;
}

TEST(Predictor, pngRowsGoByTheirOwnTag) {
    struct Case {
        const char* name;
        std::string stored;
        std::string samples;
    };
    const std::string first = "\0\x0A\x14\x1E"s; // a row of 10, 20, 30
    const Case cases[] = {
        {"none", first + "\0\1\2\3"s, "\x0A\x14\x1E\1\2\3"},
        {"sub", first + "\1\1\2\3"s, "\x0A\x14\x1E\1\3\6"},
        {"up", first + "\2\1\2\3"s, "\x0A\x14\x1E\x0B\x16\x21"},
        {"average", first + "\3\1\2\3"s, "\x0A\x14\x1E\6\x0F\x19"},
        {"paeth", first + "\4\1\2\3"s, "\x0A\x14\x1E\x0B\x16\x21"},
        {"unknown tags are none", first + "\x63\1\2\3"s, "\x0A\x14\x1E\1\2\3"},
        {"up in the first row", "\2\1\2\3"s, "\1\2\3"},
        {"average in the first row", "\3\4\4\4"s, "\4\6\7"},
        {"paeth in the first row", "\4\1\2\3"s, "\1\3\6"},
        {"sums wrap", "\0\xFF\xFF\xFF\2\2\2\2"s, "\xFF\xFF\xFF\1\1\1"},
    };
    for (const Case& each : cases)
        for (const int predictor : {10, 11, kPngUp, 13, 14, 15})
            EXPECT_EQ(undone(each.stored, parameters(predictor, 1, 8, 3)), complete(each.samples)) << each.name;
}

TEST(Predictor, paethTakesTheNearestNeighbour) {
    // Row above: 10 20 200 5; stored differences of zero show the neighbour that was chosen.
    EXPECT_EQ(undone("\0\x0A\x14\xC8\5\4\0\0\0\0"s, parameters(15, 1, 8, 4)), complete("\x0A\x14\xC8\5\x0A\x14\xC8\5"));
    EXPECT_EQ(undone("\0\xC8\x0A\4\0\0"s, parameters(15, 1, 8, 2)), complete("\xC8\x0A\xC8\x0A"));
    EXPECT_EQ(undone("\0\x64\x64\4\x32\0"s, parameters(15, 1, 8, 2)), complete("\x64\x64\x96\x96")) << "left";
    EXPECT_EQ(undone("\0\x64\x78\4\xEC\0"s, parameters(15, 1, 8, 2)), complete("\x64\x78\x50\x64")) << "corner";
}

TEST(Predictor, pngNeighbourIsAPixelAway) {
    EXPECT_EQ(undone("\1\1\2\3\1\1\1"s, parameters(15, 3, 8, 2)), complete("\1\2\3\2\3\4"));
    EXPECT_EQ(undone("\1\1\2\1\1"s, parameters(15, 1, 16, 2)), complete("\1\2\2\3"));
    EXPECT_EQ(undone("\1\1\2\1"s, parameters(15, 1, 4, 6)), complete("\1\3\4")) << "less than a byte counts as one";
}

TEST(Predictor, longAndShortRowsAddTheRowAbove) {
    for (const int columns : {1, 4, 5, 15, 16, 17, 31, 100}) {
        std::string stored;
        std::string samples;
        for (int row = 1; row <= 40; ++row) {
            stored += '\2' + std::string(static_cast<std::size_t>(columns), '\3');
            samples += std::string(static_cast<std::size_t>(columns), static_cast<char>(3 * row));
        }
        EXPECT_EQ(undone(stored, parameters(kPngUp, 1, 8, columns)), complete(samples)) << columns;
    }
}

TEST(Predictor, shortLastRowIsKept) {
    EXPECT_EQ(undone("\2\1\2\3\2\1"s, parameters(kPngUp, 1, 8, 3)), complete("\1\2\3\2"));
    EXPECT_EQ(undone("\2\1\2\3\2"s, parameters(kPngUp, 1, 8, 3)), complete("\1\2\3")) << "a tag alone";
    EXPECT_EQ(undone("\1\1\1\1\1"s, parameters(kTiff, 1, 8, 3)), complete("\1\2\3\1\2"));
    EXPECT_EQ(undone("\0\1\0\1\0"s, parameters(kTiff, 1, 16, 3)), complete("\0\1\0\2\0"s)) << "half a sample";
    EXPECT_EQ(undone("", parameters(kPngUp, 1, 8, 3)), complete(""));
}

TEST(Predictor, tiffSamplesOfEverySizeAreAdded) {
    struct Case {
        int colors;
        int bits;
        int columns;
        std::string stored;
        std::string samples;
    };
    const Case cases[] = {
        {1, 1, 8, "\xFF", "\xAA"},
        {1, 2, 4, "\x55", "\x6C"},
        {1, 4, 4, "\x11\x11", "\x12\x34"},
        {2, 4, 2, "\x12\x34", "\x12\x46"},
        {3, 2, 4, "\x55\x55\x55", "\x56\xAF\xC0"},
        {1, 8, 3, "\1\xFF\2\1\1\1", "\1\0\2\1\2\3"s},
        {3, 8, 2, "\1\2\3\1\1\1", "\1\2\3\2\3\4"},
        {1, 16, 2, "\x01\xFF\x00\x01"s, "\x01\xFF\x02\x00"s},
        {2, 16, 2, "\0\1\0\2\0\1\0\1"s, "\0\1\0\2\0\2\0\3"s},
    };
    for (const Case& each : cases)
        EXPECT_EQ(undone(each.stored, parameters(kTiff, each.colors, each.bits, each.columns)), complete(each.samples))
            << each.colors << " colours of " << each.bits << " bits";
}

TEST(Predictor, absurdParametersAreDamage) {
    const PredictorParameters absurd[] = {
        parameters(kPngUp, 0, 8, 1),
        parameters(kPngUp, -1, 8, 1),
        parameters(kPngUp, kMaximumColors + 1, 8, 1),
        parameters(kPngUp, 1, 3, 1),
        parameters(kPngUp, 1, 0, 1),
        parameters(kPngUp, 1, 8, 0),
        parameters(kTiff, 1, 8, -5),
        parameters(kTiff, 1, 8, kMaximumColumns + 1),
    };
    for (const PredictorParameters& each : absurd)
        EXPECT_EQ(undone("\2\1\2\3"s, each), cut(""))
            << each.colors << ' ' << each.bitsPerComponent << ' ' << each.columns;
}

TEST(Predictor, rowLongerThanTheDataIsAShortRow) {
    EXPECT_EQ(undone("\2\1\2\3"s, parameters(kPngUp, kMaximumColors, 16, kMaximumColumns)), complete("\1\2\3"));
}

TEST(Predictor, limitIsKept) {
    EXPECT_EQ(undone("\2\1\2\2\1\1"s, parameters(kPngUp, 1, 8, 2), 4), complete("\1\2\2\3"));
    EXPECT_EQ(undone("\2\1\2\2\1\1"s, parameters(kPngUp, 1, 8, 2), 3), tooLong("\1\2\2"));
    EXPECT_EQ(undone("\1\1\1", parameters(kTiff, 1, 8, 3), 2), tooLong("\1\2"));
    EXPECT_EQ(undone("\2\1\2"s, parameters(kPngUp, 1, 8, 2), 0), tooLong(""));
}

} // namespace
} // namespace quillow::pdf
