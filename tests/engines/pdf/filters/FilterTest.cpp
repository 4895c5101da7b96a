#include "tests/engines/pdf/filters/Decoded.h"

namespace quillow::pdf {
namespace {

using namespace std::string_literals;

TEST(Filter, namesAndAbbreviationsAreKnown) {
    struct Case {
        std::string_view name;
        std::optional<FilterName> filter;
    };
    const Case cases[] = {
        {"FlateDecode", FilterName::flate},
        {"Fl", FilterName::flate},
        {"LZWDecode", FilterName::lzw},
        {"LZW", FilterName::lzw},
        {"ASCII85Decode", FilterName::ascii85},
        {"A85", FilterName::ascii85},
        {"ASCIIHexDecode", FilterName::asciiHex},
        {"AHx", FilterName::asciiHex},
        {"RunLengthDecode", FilterName::runLength},
        {"RL", FilterName::runLength},
        {"DCTDecode", FilterName::image},
        {"DCT", FilterName::image},
        {"CCITTFaxDecode", FilterName::image},
        {"CCF", FilterName::image},
        {"JBIG2Decode", FilterName::image},
        {"JPXDecode", FilterName::image},
        {"Crypt", FilterName::crypt},
        {"flatedecode", std::nullopt},
        {"", std::nullopt},
    };
    for (const Case& each : cases)
        EXPECT_EQ(filterOfName(each.name), each.filter) << each.name;
}

TEST(Filter, picturesGiveNoBytes) {
    EXPECT_EQ(decodedBy(FilterName::image, "\xFF\xD8\xFF"), (Decoded{Decoding::notText, ""}));
}

TEST(Filter, cryptFilterPassesBytesOn) {
    EXPECT_EQ(decodedBy(FilterName::crypt, "bytes"), complete("bytes"));
    EXPECT_EQ(decodedBy(FilterName::crypt, "bytes", {}, 3), tooLong("byt"));
}

/// Five stored rows of a cross-reference stream: deflate in one stored block.
const std::string kStoredRows = "\x78\x9C\x01\x0F\x00\xF0\xFF"s + "\2\1\1\2\0\1\2\0\1\2\0\1\2\0\1"s;

TEST(Filter, predictorFollowsFlate) {
    PredictorParameters parameters;
    parameters.predictor = 12;
    parameters.columns = 2;
    EXPECT_EQ(decodedBy(FilterName::flate, kStoredRows, parameters), complete("\1\1\1\2\1\3\1\4\1\5"));
    EXPECT_EQ(decodedBy(FilterName::flate, kStoredRows.substr(0, 15), parameters), cut("\1\1\1\2\1"));
    EXPECT_EQ(decodedBy(FilterName::flate, kStoredRows, parameters, 10), complete("\1\1\1\2\1\3\1\4\1\5"));
    EXPECT_EQ(decodedBy(FilterName::flate, kStoredRows, parameters, 4), tooLong("\1\1\1\2"));
}

TEST(Filter, predictorFollowsLzw) {
    PredictorParameters parameters;
    parameters.predictor = 2;
    parameters.columns = 10;
    EXPECT_EQ(decodedBy(FilterName::lzw, "\x80\x0B\x60\x50\x22\x0C\x0C\x85\x01", parameters),
              complete("-Z\x87\xB4\xE1\x22\x4F\x7C\xA9\xEB"));
}

TEST(Filter, predictorNumbersOfNothingAreNone) {
    for (const int predictor : {-1, 0, 1, 3, 9}) {
        PredictorParameters parameters;
        parameters.predictor = predictor;
        EXPECT_EQ(decodedBy(FilterName::flate, kStoredRows, parameters), complete(kStoredRows.substr(7))) << predictor;
    }
}

TEST(Filter, decoderTakesOneStreamAfterAnother) {
    FilterDecoder decoder;
    text::ByteBuffer out;
    PredictorParameters rows;
    rows.predictor = 12;
    rows.columns = 2;
    for (int i = 0; i < 3; ++i) {
        out.clear();
        ASSERT_EQ(decoder.decode(FilterName::flate, kStoredRows, rows, kNoLimit, out), Decoding::complete);
        EXPECT_EQ(out.view(), "\1\1\1\2\1\3\1\4\1\5");
    }
}

} // namespace
} // namespace quillow::pdf
