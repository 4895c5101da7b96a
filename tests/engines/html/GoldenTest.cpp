// Whole documents: each NAME.in of tests/data/html gives the text of NAME.txt. With QUILLOW_APPROVE=1 in the
// environment, the test writes the texts instead.
#include "tests/engines/html/TestSupport.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace quillow::html {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> documents() {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(fs::path(QUILLOW_SOURCE_DIR) / "tests/data/html"))
        if (entry.path().extension() == ".in") found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

std::string contentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class HtmlGolden : public testing::TestWithParam<fs::path> {};

TEST_P(HtmlGolden, givesItsText) {
    fs::path expected = GetParam();
    expected.replace_extension(".txt");
    const std::string text = readText(contentOf(GetParam())).text.value_or("(nothing)");
    if (std::getenv("QUILLOW_APPROVE") != nullptr) std::ofstream(expected, std::ios::binary) << text;
    EXPECT_EQ(text, contentOf(expected));
}

INSTANTIATE_TEST_SUITE_P(Documents, HtmlGolden, testing::ValuesIn(documents()),
                         [](const auto& golden) { return golden.param.stem().string(); });

} // namespace
} // namespace quillow::html
