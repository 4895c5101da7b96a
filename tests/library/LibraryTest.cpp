// The functions of libquillowtext, called as a program calls them.
#include "tests/cli/RunConvert.h"
#include "tests/library/Samples.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <cstring>
#include <set>
#include <thread>

namespace quillow::test {
namespace {

TEST(LibraryTest, everySampleHasTheBytesOfTheCommandLine) {
    struct Case {
        std::uint32_t flags;
        std::vector<std::string> options;
    };
    const std::array cases = {
        Case{0, {}},
        Case{QUILLOW_PAGE_MARKS | QUILLOW_LINKS | QUILLOW_HIDDEN_TEXT, {"--page-marks=ff", "--links", "--hidden-text"}},
        Case{QUILLOW_CELLS_LINE | QUILLOW_NO_LIST_MARKERS | QUILLOW_HEADERS_FOOTERS | QUILLOW_REFLOW,
             {"--cells=line", "--no-list-markers", "--headers-footers", "--reflow"}},
    };
    const std::vector<Sample> samples = allSamples();
    ASSERT_EQ(samples.size(), 17U);
    for (const Case& one : cases) {
        const TemporaryFolder folder;
        std::vector<std::string> words = one.options;
        words.insert(words.end(), {"-q", "-o", folder.at("")});
        for (const Sample& sample : samples)
            words.push_back(sample.path);
        ASSERT_EQ(run(words).exitCode, 0);

        for (const Sample& sample : samples) {
            const Result result = extracted(sample.bytes, sample.kind, one.flags);
            const auto name = std::filesystem::path(sample.name).replace_extension(".txt");
            EXPECT_TRUE(textOf(result) == readFile(folder.at(name.string()))) << sample.name << " flags " << one.flags;
        }
    }
}

TEST(LibraryTest, contentSaysWhatADocumentIs) {
    EXPECT_EQ(textOf(extracted("{\\rtf1 one}")), "one\n");
    EXPECT_EQ(textOf(extracted("<!DOCTYPE html><p>two")), "two\n");
    EXPECT_EQ(extracted("\x89PNG\r\n")->reason, QUILLOW_WRONG_TYPE);
    EXPECT_EQ(Result(quillow_extract(nullptr, 0, nullptr))->reason, QUILLOW_DAMAGED);
}

TEST(LibraryTest, aTextThatIsEmptyDiffersFromNone) {
    const Result empty = extracted("", QUILLOW_HTML);
    const Result none = extracted("%PDF-1.4 nothing", QUILLOW_PDF);

    EXPECT_EQ(empty->reason, QUILLOW_OK_EMPTY);
    ASSERT_NE(empty->text, nullptr);
    EXPECT_EQ(empty->text_size, 0U);
    EXPECT_EQ(none->reason, QUILLOW_DAMAGED);
    EXPECT_EQ(none->text, nullptr);
    EXPECT_STRNE(none->detail, "");
}

TEST(LibraryTest, aTextEndsWithANulByte) {
    const Result result = extracted("{\\rtf1 one\\par two}");

    EXPECT_EQ(std::strlen(result->text), result->text_size);
}

/// A PDF of so many pages with a line of text each. It has no table of its objects, so they are searched for.
std::string pdfOfPages(int pages) {
    std::string document = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n2 0 obj<</Type/Pages/Kids[";
    for (int page = 0; page < pages; ++page)
        document += std::to_string(4 + 2 * page) + " 0 R ";
    document +=
        "]/Count " + std::to_string(pages) + ">>endobj\n3 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>endobj\n";
    for (int page = 0; page < pages; ++page) {
        const std::string content = "BT /F 12 Tf 50 700 Td (Page " + std::to_string(page + 1) + ") Tj ET";
        document += std::to_string(4 + 2 * page) + " 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents " +
                    std::to_string(5 + 2 * page) + " 0 R/Resources<</Font<</F 3 0 R>>>>>>endobj\n" +
                    std::to_string(5 + 2 * page) + " 0 obj<</Length " + std::to_string(content.size()) + ">>stream\n" +
                    content + "\nendstream endobj\n";
    }
    return document + "trailer<</Root 1 0 R>>\n%%EOF\n";
}

TEST(LibraryTest, pagesAreChosenAndCounted) {
    quillow_options options = QUILLOW_OPTIONS_INIT;
    const Result whole = extracted(pdfOfPages(3), options);
    options.pages = "2-";
    const Result some = extracted(pdfOfPages(3), options);

    EXPECT_EQ(textOf(whole), "Page 1\nPage 2\nPage 3\n");
    EXPECT_EQ(textOf(some), "Page 2\nPage 3\n");
    EXPECT_EQ(whole->pages, 3U);
    EXPECT_EQ(whole->characters_decoded, 18U);
}

TEST(LibraryTest, severalThreadsGiveTheSameText) {
    const std::string document = pdfOfPages(200);
    quillow_options options = QUILLOW_OPTIONS_INIT;
    options.threads = 4;

    EXPECT_EQ(textOf(extracted(document, options)), textOf(extracted(document)));
}

TEST(LibraryTest, optionsThatAreNotUnderstoodAreAResult) {
    const quillow_options good = QUILLOW_OPTIONS_INIT;
    std::vector<quillow_options> mistakes(7, good);
    mistakes[0].kind = 5;
    mistakes[1].flags = 1U << 7U;
    mistakes[2].reserved = 1;
    mistakes[3].pages = "0";
    mistakes[4].threads = 257;
    mistakes[5].size = 0;
    mistakes[6].size = std::size_t{1} << 20;
    for (const quillow_options& options : mistakes) {
        const Result result = extracted("{\\rtf1 one}", options);
        EXPECT_EQ(result->reason, QUILLOW_UNREADABLE);
        EXPECT_STRNE(result->detail, "");
        EXPECT_EQ(result->text, nullptr);
    }
}

TEST(LibraryTest, optionsOfALaterVersionServeIfTheyAreZero) {
    struct LaterOptions {
        quillow_options known = QUILLOW_OPTIONS_INIT;
        std::uint64_t unknown = 0;
    };
    LaterOptions later;
    later.known.size = sizeof later;

    EXPECT_EQ(textOf(extracted("{\\rtf1 one}", later.known)), "one\n");
    later.unknown = 1;
    EXPECT_EQ(extracted("{\\rtf1 one}", later.known)->reason, QUILLOW_UNREADABLE);
}

TEST(LibraryTest, everyReasonHasAName) {
    std::set<std::string> names;
    for (std::int32_t reason = QUILLOW_OK; reason <= QUILLOW_SKIPPED; ++reason)
        names.insert(quillow_reason_name(reason));

    EXPECT_EQ(names.size(), 14U);
    EXPECT_STREQ(quillow_reason_name(QUILLOW_NO_TEXT_LAYER), "no-text-layer");
    EXPECT_STREQ(quillow_reason_name(-1), "unknown");
    EXPECT_STREQ(quillow_reason_name(14), "unknown");
}

TEST(LibraryTest, theVersionIsThatOfTheCommandLine) {
    EXPECT_EQ(run({"--version"}).output, std::string("quillow-convert ") + quillow_version() + "\n");
}

TEST(LibraryTest, eightThreadsReadEverySampleAtOnce) {
    const std::vector<Sample> samples = allSamples();
    std::vector<std::string> expected;
    for (const Sample& sample : samples)
        expected.push_back(textOf(extracted(sample.bytes, sample.kind)));
    std::array<std::vector<std::string>, 8> read;

    std::vector<std::thread> threads;
    for (std::vector<std::string>& texts : read)
        threads.emplace_back([&samples, &texts] {
            for (const Sample& sample : samples)
                texts.push_back(textOf(extracted(sample.bytes, sample.kind)));
        });
    for (std::thread& thread : threads)
        thread.join();

    for (const std::vector<std::string>& texts : read)
        EXPECT_TRUE(texts == expected);
}

#ifndef __SANITIZE_ADDRESS__ // whose frames are larger
TEST(LibraryTest, aThreadWithTheStackThatTheHeaderNamesReadsEverySample) {
    constexpr std::size_t kStack = std::size_t{256} << 10;
    static std::size_t texts = 0;
    pthread_attr_t attributes;
    ::pthread_attr_init(&attributes);
    ASSERT_EQ(::pthread_attr_setstacksize(&attributes, kStack), 0);
    pthread_t thread{};
    const auto work = [](void*) -> void* {
        for (const Sample& sample : allSamples())
            texts += extracted(sample.bytes, sample.kind)->text != nullptr ? 1 : 0;
        return nullptr;
    };

    ASSERT_EQ(::pthread_create(&thread, &attributes, work, nullptr), 0);
    ::pthread_join(thread, nullptr);
    ::pthread_attr_destroy(&attributes);

    EXPECT_EQ(texts, allSamples().size());
}
#endif

} // namespace
} // namespace quillow::test
