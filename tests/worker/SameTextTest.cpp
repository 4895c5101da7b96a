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

/// A PDF without a table of its objects, which the engine then looks for.
std::string longPdf(int pages) {
    std::string kids;
    std::string objects;
    for (int page = 0; page < pages; ++page) {
        const std::string number = std::to_string(10 + 2 * page);
        const std::string content = std::to_string(11 + 2 * page);
        kids += number + " 0 R ";
        objects += number + " 0 obj<</Type/Page/Parent 2 0 R/Contents " + content + " 0 R>>endobj\n";
        const std::string text = "BT /F 10 Tf 10 700 Td (Page " + std::to_string(page) + ") Tj ET";
        objects +=
            content + " 0 obj<</Length " + std::to_string(text.size()) + ">>stream\n" + text + "\nendstream endobj\n";
    }
    return "%PDF-1.7\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
           "2 0 obj<</Type/Pages/MediaBox[0 0 600 800]/Resources<</Font<</F 3 0 R>>>>/Count " +
           std::to_string(pages) + "/Kids[" + kids +
           "]>>endobj\n3 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>endobj\n" + objects +
           "trailer<</Root 1 0 R>>\n";
}

TEST(SameText, aLongPdfReadByManyThreadsReadsAsByOne) {
    const std::string document = longPdf(300);
    const Extraction alone = extract(std::as_bytes(std::span(document)), DocumentKind::pdf);
    ASSERT_EQ(alone.reason, Reason::ok);
    ASSERT_TRUE(alone.text->ends_with("Page 299\n"));
    Limits limits;
    limits.threads = 4;
    Pool pool({kWorker}, limits);
    for (const unsigned threads : {1U, 2U, 3U, 4U, 9U}) {
        Options options;
        options.threads = threads;
        for (int i = 0; i < 20; ++i)
            expectSame(pool.read(inMemory(document), DocumentKind::pdf, options), alone, std::to_string(threads));
    }
}

} // namespace
} // namespace quillow::worker
