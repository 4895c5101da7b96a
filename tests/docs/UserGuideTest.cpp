// The user guide as it was built, read by our own engine.
#include "engines/Extract.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace quillow {
namespace {

const std::string kTitle = "Quillow User Guide";
/// A heading that is one of the last lines of its page has lost its text.
constexpr std::size_t kLeastLinesAfterAHeading = 2;
constexpr std::size_t kLeastLinesOfAPage = 10;

const std::vector<std::string> kHeadings = {"Converting documents", "The destination folder",   "The message log",
                                            "Preferences",          "How each format is read",  "Limits",
                                            "On the command line",  "When something goes wrong"};

std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string guideBytes() {
    return bytesOf(QUILLOW_BINARY_DIR "/share/quillow/Quillow User Guide.pdf");
}

Extraction read(const std::string& bytes, DocumentKind kind, const Options& options = {}) {
    return extract(std::as_bytes(std::span(bytes)), kind, options);
}

/// The lines of each page that are not blank, without the foot, which must be there.
std::vector<std::vector<std::string>> pagesOfTheGuide() {
    Options options;
    options.pageMarks = PageMarks::formFeed;
    std::istringstream text(*read(guideBytes(), DocumentKind::pdf, options).text);
    std::vector<std::vector<std::string>> pages;
    for (std::string page; std::getline(text, page, '\f');) {
        std::vector<std::string> lines;
        std::istringstream stream(page);
        for (std::string line; std::getline(stream, line);)
            if (!line.empty()) lines.push_back(line);
        EXPECT_TRUE(!lines.empty() && lines.back().starts_with(kTitle)) << "foot of page " << pages.size() + 1;
        if (!lines.empty()) lines.pop_back();
        pages.push_back(std::move(lines));
    }
    return pages;
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    return {std::istream_iterator<std::string>(stream), {}};
}

TEST(UserGuide, isAPdfWithItsHeadingsInOrder) {
    const Extraction guide = read(guideBytes(), DocumentKind::pdf);
    ASSERT_EQ(guide.reason, Reason::ok) << guide.detail;
    EXPECT_EQ(guide.loss.charactersWithoutUnicode, 0U);
    std::size_t at = 0;
    for (const std::string& heading : kHeadings) {
        const std::size_t found = ("\n" + *guide.text).find("\n" + heading + "\n", at);
        ASSERT_NE(found, std::string::npos) << heading;
        at = found;
    }
}

TEST(UserGuide, hasTheWordsOfItsSourceInTheirOrder) {
    std::vector<std::string> words;
    for (const auto& page : pagesOfTheGuide())
        for (const std::string& line : page)
            std::ranges::copy(wordsOf(line), std::back_inserter(words));
    Options options;
    options.listMarkers = ListMarkers::off; // in the PDF they are drawn
    const Extraction source = read(bytesOf(QUILLOW_SOURCE_DIR "/docs/guide/guide.html"), DocumentKind::html, options);
    EXPECT_EQ(words, wordsOf(*source.text));
}

TEST(UserGuide, hasNoPageOfAFewLinesAndNoHeadingWithoutText) {
    const auto pages = pagesOfTheGuide();
    EXPECT_GE(pages.size(), 4U);
    for (const auto& page : pages) {
        EXPECT_GE(page.size(), kLeastLinesOfAPage) << page.front();
        for (std::size_t at = page.size() - std::min(page.size(), kLeastLinesAfterAHeading); at < page.size(); ++at)
            EXPECT_EQ(std::ranges::count(kHeadings, page[at]), 0) << page[at];
    }
}

TEST(UserGuide, tellsNoTimeOfItsMaking) {
    EXPECT_NE(guideBytes().find("/CreationDate (D:20260101000000"), std::string::npos);
}

} // namespace
} // namespace quillow
