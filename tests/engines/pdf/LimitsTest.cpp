#include "engines/pdf/Limits.h"

#include "engines/pdf/Reader.h"

#include <gtest/gtest.h>

#include <functional>

namespace quillow::pdf {
namespace {

/// Pages whose text a function returns.
class MadePages final : public PageSource {
public:
    using Page = std::function<std::optional<std::u16string>(std::size_t)>;

    MadePages(std::size_t count, Page page)
        : count_(count)
        , page_(std::move(page)) {}

    [[nodiscard]] Opening opening() const noexcept override { return Opening::opened; }
    [[nodiscard]] std::size_t count() const noexcept override { return count_; }
    [[nodiscard]] std::optional<std::u16string> pageText(std::size_t index,
                                                         PageOrder /*order*/) const noexcept override {
        ++asked;
        return page_(index);
    }
    [[nodiscard]] bool hasMemoryEnded() const noexcept override { return asked >= memoryEndsAt; }

    mutable std::size_t asked = 0;
    std::size_t memoryEndsAt = static_cast<std::size_t>(-1); ///< number of read pages at which memory runs out

private:
    std::size_t count_;
    Page page_;
};

std::optional<std::u16string> letter(std::size_t /*index*/) {
    return u"x";
}

TEST(Limits, asManyPagesAsAllowedAreAllRead) {
    const Extraction extraction = readPages(MadePages(kMaximumPages, letter), {});

    EXPECT_EQ(extraction.reason, Reason::ok);
    EXPECT_EQ(extraction.text->size(), 2 * kMaximumPages);
}

TEST(Limits, pagesBeyondTheLimitAreLeftAndTheOthersKept) {
    const MadePages pages(kMaximumPages + 2, letter);

    const Extraction extraction = readPages(pages, {});

    EXPECT_EQ(extraction.reason, Reason::partial);
    EXPECT_EQ(extraction.detail, "more than 100000 pages");
    EXPECT_EQ(extraction.text->size(), 2 * kMaximumPages);
    EXPECT_EQ(extraction.pages, kMaximumPages + 2);
    EXPECT_EQ(pages.asked, kMaximumPages);
}

TEST(Limits, pagesAreNoLongerAskedForWhenTooManyInARowAreMissing) {
    const MadePages pages(kMaximumPages, [](std::size_t index) { return index == 0 ? letter(index) : std::nullopt; });

    const Extraction extraction = readPages(pages, {});

    EXPECT_EQ(extraction.reason, Reason::partial);
    EXPECT_EQ(extraction.detail, "too many pages are missing");
    EXPECT_EQ(extraction.text, "x\n");
    EXPECT_EQ(pages.asked, 1 + kMaximumMissingPages + 1);
}

TEST(Limits, missingPagesInARowCountAnewAfterAPage) {
    const MadePages pages(3 * kMaximumMissingPages, [](std::size_t index) {
        return index % kMaximumMissingPages == 0 ? letter(index) : std::nullopt;
    });

    EXPECT_EQ(readPages(pages, {}).text, "x\nx\nx\n");
}

TEST(Limits, textBeyondTheLimitEndsTheReading) {
    constexpr std::size_t kPage = 4 << 20;
    const std::u16string page(kPage, u'x');
    const MadePages pages(kMaximumPages, [&](std::size_t) { return page; });

    const Extraction extraction = readPages(pages, {});

    EXPECT_EQ(extraction.reason, Reason::partial);
    EXPECT_EQ(extraction.detail, "the text is too long");
    EXPECT_GT(extraction.text->size(), kMaximumText);
    EXPECT_LE(extraction.text->size(), kMaximumText + kPage + 2);
}

TEST(Limits, endOfMemoryIsNoMissingPage) {
    MadePages pages(3, letter);

    pages.memoryEndsAt = 2;
    EXPECT_THROW(static_cast<void>(readPages(pages, {})), std::bad_alloc);
    EXPECT_EQ(pages.asked, 2U);

    pages.memoryEndsAt = 0;
    EXPECT_THROW(static_cast<void>(readPages(pages, {})), std::bad_alloc);
    EXPECT_EQ(pages.asked, 2U);
}

} // namespace
} // namespace quillow::pdf
