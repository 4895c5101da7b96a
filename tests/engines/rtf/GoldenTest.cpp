// The documents of tests/data/rtf and their texts. Each document tests one construct of the format.
#include "engines/rtf/Reader.h"
#include "tests/engines/GoldenCases.h"

namespace quillow::test {
namespace {

class RtfGolden : public testing::TestWithParam<std::string> {};

TEST_P(RtfGolden, givesItsText) {
    expectGolden("rtf", GetParam(), [](auto bytes, const Options& options) { return rtf::readRtf(bytes, options); });
}

INSTANTIATE_TEST_SUITE_P(Documents, RtfGolden, testing::ValuesIn(goldenNames("rtf")),
                         [](const auto& instance) { return instance.param; });

} // namespace
} // namespace quillow::test
