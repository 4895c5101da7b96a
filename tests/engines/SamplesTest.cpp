// Whole documents from real programs, compared with the texts in their sources. samples/README.md describes the
// documents and how they were made.
#include "engines/Extract.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillow {
namespace {

namespace fs = std::filesystem;

const fs::path kSamples = fs::path(QUILLOW_SOURCE_DIR) / "samples";

struct Sample {
    const char* name;
    /// The number of lines that only one of the two texts has, blank lines included. The aim is 0. Any other
    /// number is a known difference: a change in either direction fails the test, so that an improvement is
    /// recorded here.
    std::size_t linesApart = 0;
};

constexpr Sample kDocuments[] = {
    {"field-notes.rtfd"},          {"kettle-manual.html"},      {"lamp.pdf", 1},           {"lease-mixed.rtf"},
    {"library-japanese.rtf"},      {"mail-thread-russian.htm"}, {"market-french.html"},    {"notice-russian.rtf"},
    {"offer-german.rtf"},          {"poem-greek.htm"},          {"recipe-polish.rtf"},     {"sea-words.pdf"},
    {"thesis-page.pdf", 3},        {"timetable-japanese.htm"},  {"village-letter.pdf", 4}, {"voices-of-asia.pdf"},
    {"will-hebrew-arabic.pdf", 1},
};

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

struct Difference {
    std::size_t linesApart = 0;
    std::string report; ///< "- " before lines of only the expected text, "+ " before lines of only the actual one
};

/// A longest common subsequence of the lines, by the table of common suffixes; the documents are small.
Difference differenceOf(std::string_view expectedText, std::string_view actualText) {
    const std::vector<std::string_view> expected = linesOf(expectedText);
    const std::vector<std::string_view> actual = linesOf(actualText);
    std::vector<std::vector<std::size_t>> common(expected.size() + 1, std::vector<std::size_t>(actual.size() + 1));
    for (std::size_t e = expected.size(); e-- > 0;)
        for (std::size_t a = actual.size(); a-- > 0;)
            common[e][a] =
                expected[e] == actual[a] ? common[e + 1][a + 1] + 1 : std::max(common[e + 1][a], common[e][a + 1]);

    Difference difference;
    const auto tell = [&difference](const char* sign, std::size_t index, std::string_view line) {
        ++difference.linesApart;
        difference.report += sign + std::to_string(index + 1) + ": " + std::string(line) + "\n";
    };
    std::size_t e = 0;
    std::size_t a = 0;
    while (e < expected.size() || a < actual.size()) {
        if (e < expected.size() && a < actual.size() && expected[e] == actual[a]) {
            ++e;
            ++a;
        } else if (a == actual.size() || (e < expected.size() && common[e + 1][a] >= common[e][a + 1])) {
            tell("- ", e, expected[e]);
            ++e;
        } else {
            tell("+ ", a, actual[a]);
            ++a;
        }
    }
    return difference;
}

void PrintTo(const Sample& sample, std::ostream* out) {
    *out << sample.name;
}

class SamplesTest : public testing::TestWithParam<Sample> {};

TEST_P(SamplesTest, readsAsItsSourceSays) {
    const fs::path document = kSamples / GetParam().name;
    const auto kind = documentKindForExtension(document.extension().string().substr(1));
    ASSERT_TRUE(kind.has_value());
    const std::string bytes = contentOf(*kind == DocumentKind::rtfd ? document / "TXT.rtf" : document);
    const std::string expected = contentOf(kSamples / "expected" / (std::string(GetParam().name) + ".txt"));
    ASSERT_FALSE(expected.empty());

    const Extraction extraction = extract(std::as_bytes(std::span(bytes)), *kind);

    EXPECT_EQ(reasonName(extraction.reason), reasonName(Reason::ok)) << extraction.detail;
    EXPECT_EQ(extraction.loss.charactersWithoutUnicode, 0U);
    ASSERT_TRUE(extraction.text.has_value());
    const Difference difference = differenceOf(expected, *extraction.text);
    EXPECT_EQ(difference.linesApart, GetParam().linesApart) << difference.report;
    if (difference.linesApart == 0) {
        EXPECT_TRUE(*extraction.text == expected) << "the texts differ in their line ends";
    }
}

std::string caseName(const testing::TestParamInfo<Sample>& sample) {
    std::string name = sample.param.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Documents, SamplesTest, testing::ValuesIn(kDocuments), caseName);

TEST(SamplesFolderTest, everyDocumentIsTested) {
    std::set<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(kSamples)) {
        const std::string extension = entry.path().extension().string();
        if (!extension.empty() && documentKindForExtension(std::string_view(extension).substr(1)))
            found.insert(entry.path().filename().string());
    }

    std::set<std::string> tested;
    for (const Sample& sample : kDocuments)
        tested.insert(sample.name);
    EXPECT_EQ(found, tested);
}

} // namespace
} // namespace quillow
