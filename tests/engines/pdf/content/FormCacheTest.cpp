#include "engines/pdf/content/FormCache.h"

#include "tests/engines/pdf/content/ContentDump.h"

#include <gtest/gtest.h>

namespace quillow::pdf::test {
namespace {

/// Ten million blanks in run lengths.
std::string largeForm() {
    std::string data;
    for (std::size_t i = 0; i < 10'000'000 / 128; ++i)
        data += "\x81 ";
    return streamOf("/Subtype/Form/Filter/RunLengthDecode", data);
}

TEST(PdfFormCache, keepsFormsUntilTheyAreTooManyBytes) {
    const std::string file = onePagePdf("", "<<>>", {largeForm(), largeForm(), largeForm(), largeForm()});
    auto document = Document::open(file);
    ASSERT_TRUE(document);
    FormCache cache(*document.value());
    const auto formOf = [&](std::uint32_t number) -> Form& {
        return cache.formOf(*document.value()->load({number, 0}).stream());
    };
    Form& used = formOf(5);
    cache.load(used);
    ++used.uses;
    EXPECT_GT(cache.takeCost(), 9'000'000U);
    cache.load(used);
    EXPECT_GT(cache.takeCost(), 9'000'000U); // the same whether it was there or not
    EXPECT_GT(cache.reused(), 9'000'000U);   // decoded once
    EXPECT_EQ(&formOf(5), &used);

    Form& unused = formOf(6);
    cache.load(unused);
    EXPECT_TRUE(unused.isDecoded);
    cache.load(formOf(7)); // the others have more than kMaximumFormBytes
    EXPECT_FALSE(unused.isDecoded);
    EXPECT_TRUE(used.isDecoded);
    EXPECT_EQ(used.bytes.size(), 10'000'000U / 128 * 128);

    cache.load(unused);
    EXPECT_TRUE(unused.isDecoded);
}

} // namespace
} // namespace quillow::pdf::test
