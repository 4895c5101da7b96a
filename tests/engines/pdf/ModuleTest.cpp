#include "engines/pdf/Module.h"

#include "engines/pdf/Reader.h"
#include "tests/engines/DataFiles.h"

#include <gtest/gtest.h>

#include <array>
#include <future>

namespace quillow::pdf {
namespace {

using test::asBytes;
using test::dataFile;
using test::fileContent;

TEST(Module, opensDocumentsFromSeveralThreadsAtOnce) {
    const std::string document = fileContent(dataFile("pdf/plain.in"));
    std::array<std::future<std::size_t>, 4> counts;
    for (auto& count : counts)
        count = std::async(std::launch::async, [&] { return Module::installed().open(asBytes(document))->count(); });

    for (auto& count : counts)
        EXPECT_EQ(count.get(), 2U);
    EXPECT_EQ(Module::installed().failure(), "");
}

TEST(Module, saysWhyItCouldNotBeLoaded) {
    const Module missing("/nowhere/no-such-module.so");

    EXPECT_EQ(missing.open(asBytes("%PDF-1.7\n")), nullptr);
    EXPECT_NE(missing.failure().find("no-such-module.so"), std::string::npos);
}

TEST(Module, libraryWithoutTheEntryPointIsNone) {
    const Module other("libm.so.6");

    EXPECT_EQ(other.open(asBytes("%PDF-1.7\n")), nullptr);
    EXPECT_NE(other.failure().find("quillowOpenPdf"), std::string::npos);
}

TEST(Module, withoutItNoPdfIsReadAndTheReasonSaysSo) {
    const Extraction extraction =
        readPdf(asBytes(fileContent(dataFile("pdf/plain.in"))), {}, Module("/nowhere/no-such-module.so"));

    EXPECT_EQ(extraction.reason, Reason::unreadable);
    EXPECT_FALSE(extraction.text);
    EXPECT_TRUE(extraction.detail.starts_with("what reads PDFs is not installed: ")) << extraction.detail;
}

} // namespace
} // namespace quillow::pdf
