// Whole documents by real producers, against the texts that their sources say they hold. The documents and how they were
// made: samples/README.md.
#include "engines/Extract.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <span>
#include <string>
#include <string_view>

namespace quillow {
namespace {

namespace fs = std::filesystem;

const fs::path kSamples = fs::path(QUILLOW_SOURCE_DIR) / "samples";

constexpr const char* kDocuments[] = {
    "field-notes.rtfd",       "kettle-manual.html",      "lamp.pdf",           "lease-mixed.rtf",
    "library-japanese.rtf",   "mail-thread-russian.htm", "market-french.html", "notice-russian.rtf",
    "offer-german.rtf",       "poem-greek.htm",          "recipe-polish.rtf",  "sea-words.pdf",
    "thesis-page.pdf",        "timetable-japanese.htm",  "village-letter.pdf", "voices-of-asia.pdf",
    "will-hebrew-arabic.pdf",
};

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

DocumentKind kindOf(const fs::path& path) {
    return documentKindForExtension(path.extension().string().substr(1)).value_or(DocumentKind::rtf);
}

/// "line 3: expected ..., got ...": where two texts part, for a reader of the test's output.
std::string firstDifference(std::string_view expected, std::string_view actual) {
    const auto lineEnd = [](std::string_view text, std::size_t from) {
        return std::min(text.find('\n', from), text.size());
    };
    std::size_t line = 1;
    std::size_t at = 0;
    for (;; ++line) {
        const std::size_t expectedEnd = lineEnd(expected, at);
        const std::size_t actualEnd = lineEnd(actual, at);
        const std::string_view wanted = expected.substr(at, expectedEnd - at);
        const std::string_view got = actual.substr(at, actualEnd - at);
        if (wanted != got || expectedEnd == expected.size() || actualEnd == actual.size())
            return "line " + std::to_string(line) + ":\n  expected " + testing::PrintToString(std::string(wanted)) +
                   "\n  got      " + testing::PrintToString(std::string(got));
        at = expectedEnd + 1;
    }
}

class SamplesTest : public testing::TestWithParam<const char*> {};

TEST_P(SamplesTest, readsAsItsSourceSays) {
    const fs::path document = kSamples / GetParam();
    const std::string bytes = contentOf(document.extension() == ".rtfd" ? document / "TXT.rtf" : document);
    const std::string expected = contentOf(kSamples / "expected" / (std::string(GetParam()) + ".txt"));
    ASSERT_FALSE(bytes.empty());
    ASSERT_FALSE(expected.empty());

    const Extraction extraction = extract(std::as_bytes(std::span(bytes)), kindOf(document));

    EXPECT_EQ(reasonName(extraction.reason), reasonName(Reason::ok)) << extraction.detail;
    EXPECT_EQ(extraction.loss.charactersWithoutUnicode, 0U);
    ASSERT_TRUE(extraction.text.has_value());
    EXPECT_TRUE(*extraction.text == expected) << firstDifference(expected, *extraction.text) << "\nthe whole text:\n"
                                              << *extraction.text;
}

INSTANTIATE_TEST_SUITE_P(Documents, SamplesTest, testing::ValuesIn(kDocuments),
                         [](const testing::TestParamInfo<const char*>& info) {
                             std::string name = info.param;
                             std::replace_if(
                                 name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
                             return name;
                         });

TEST(SamplesFolderTest, everyDocumentIsTested) {
    std::set<std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(kSamples)) {
        const std::string extension = entry.path().extension().string();
        if (!extension.empty() && documentKindForExtension(extension.substr(1)))
            found.insert(entry.path().filename().string());
    }

    EXPECT_EQ(found, std::set<std::string>(std::begin(kDocuments), std::end(kDocuments)));
}

} // namespace
} // namespace quillow
