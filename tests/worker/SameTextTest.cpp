// A worker gives what the engines give in this process, for every sample and every document of the tests.
#include "engines/Extract.h"
#include "tests/worker/PoolFixture.h"

#include <algorithm>
#include <fstream>

namespace quillow::worker {
namespace {

using namespace test;

struct Sample {
    std::string path;
    DocumentKind kind;
    std::string bytes;
};

std::vector<Sample> samples() {
    std::vector<Sample> samples;
    const std::filesystem::path root = QUILLOW_SOURCE_DIR;
    for (const auto& [folder, onlyKind] :
         {std::pair{root / "samples", ""}, std::pair{root / "tests/data/rtf", "rtf"},
          std::pair{root / "tests/data/html", "html"}, std::pair{root / "tests/data/pdf", "pdf"}})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            const std::string extension = entry.path().extension().string();
            if (!entry.is_regular_file() || extension.empty() || extension == ".txt") continue;
            const std::string ownKind = extension == ".in" ? onlyKind : extension.substr(1);
            const auto kind = documentKindForExtension(ownKind);
            if (!kind) continue;
            std::ifstream file(entry.path(), std::ios::binary);
            samples.push_back({entry.path().string(), *kind, {std::istreambuf_iterator<char>(file), {}}});
        }
    return samples;
}

/// Options of the text that differ from the defaults in everything.
Options allOptions() {
    Options options;
    options.pageMarks = PageMarks::formFeed;
    options.cells = CellSeparator::line;
    options.listMarkers = ListMarkers::off;
    options.links = LinkTargets::afterText;
    options.hiddenText = HiddenText::on;
    options.headersFooters = HeadersFooters::on;
    options.reflow = Reflow::joinLines;
    options.password = "user";
    return options;
}

void expectSame(const Extraction& isolated, const Extraction& here, const std::string& path) {
    EXPECT_EQ(isolated.reason, here.reason) << path;
    EXPECT_TRUE(isolated.text == here.text) << path;
    EXPECT_EQ(isolated.detail, here.detail) << path;
    EXPECT_EQ(isolated.pages, here.pages) << path;
    EXPECT_EQ(isolated.loss.charactersDecoded, here.loss.charactersDecoded) << path;
    EXPECT_EQ(isolated.loss.charactersWithoutUnicode, here.loss.charactersWithoutUnicode) << path;
    EXPECT_EQ(isolated.loss.pagesWithoutText, here.loss.pagesWithoutText) << path;
    EXPECT_EQ(isolated.loss.partsSkipped, here.loss.partsSkipped) << path;
}

TEST(SameText, everyDocumentReadsAsInThisProcess) {
    const std::vector<Sample> all = samples();
    EXPECT_GT(all.size(), 100U);
    Pool pool({kWorker});
    for (const Options& options : {Options(), allOptions()})
        for (const Sample& sample : all)
            expectSame(pool.read(inMemory(sample.bytes), sample.kind, options),
                       extract(std::as_bytes(std::span(sample.bytes)), sample.kind, options), sample.path);
}

} // namespace
} // namespace quillow::worker
