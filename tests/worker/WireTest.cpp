// Messages: what is written is read again, and an answer that breaks the engines' contract is not taken.
#include "worker/Wire.h"

#include "worker/Isolation.h"

#include <gtest/gtest.h>

namespace quillow::worker {
namespace {

Extraction withText(std::string text) {
    Extraction extraction;
    extraction.reason = text.empty() ? Reason::okEmpty : Reason::ok;
    extraction.text = std::move(text);
    return extraction;
}

constexpr Token kToken = 0x0123456789ABCDEF;

std::optional<Extraction> sent(const Extraction& extraction, const Options& options = {}) {
    return decodeAnswer(encodeAnswer(kToken, extraction), extraction.text.value_or(""), kToken, options);
}

TEST(Wire, aRequestKeepsEveryOption) {
    Request request;
    request.token = kToken;
    request.question.kind = DocumentKind::pdf;
    request.question.explainedPage = 3;
    request.delivery = Delivery::descriptor;
    request.maximumText = 12345;
    Options& options = request.question.options;
    options = {PageMarks::formFeed,
               CellSeparator::line,
               ListMarkers::off,
               LinkTargets::afterText,
               HiddenText::on,
               HeadersFooters::on,
               Reflow::joinLines,
               4,
               {},
               PageSelection({{3, 7}, {12, 12}}),
               "pass\0word"};
    const auto read = decodeRequest(encodeRequest(request).value());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->token, kToken);
    EXPECT_EQ(read->question.kind, request.question.kind);
    EXPECT_EQ(read->question.explainedPage, 3U);
    EXPECT_EQ(read->delivery, request.delivery);
    EXPECT_EQ(read->maximumText, 12345U);
    EXPECT_EQ(read->question.options.pageMarks, PageMarks::formFeed);
    EXPECT_EQ(read->question.options.cells, CellSeparator::line);
    EXPECT_EQ(read->question.options.listMarkers, ListMarkers::off);
    EXPECT_EQ(read->question.options.links, LinkTargets::afterText);
    EXPECT_EQ(read->question.options.hiddenText, HiddenText::on);
    EXPECT_EQ(read->question.options.headersFooters, HeadersFooters::on);
    EXPECT_EQ(read->question.options.reflow, Reflow::joinLines);
    EXPECT_EQ(read->question.options.threads, 4U);
    EXPECT_EQ(read->question.options.pages.ranges(), options.pages.ranges());
    EXPECT_EQ(read->question.options.password, request.question.options.password);
}

TEST(Wire, anAnswerKeepsEveryField) {
    Extraction extraction;
    extraction.reason = Reason::partial;
    extraction.text = "text\n";
    extraction.detail = "a page is missing";
    extraction.loss = {1, 2, 3, 4};
    extraction.pages = 5;
    const auto read = sent(extraction);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->reason, Reason::partial);
    EXPECT_EQ(read->text, "text\n");
    EXPECT_EQ(read->detail, "a page is missing");
    EXPECT_EQ(read->loss.charactersDecoded, 1U);
    EXPECT_EQ(read->loss.charactersWithoutUnicode, 2U);
    EXPECT_EQ(read->loss.pagesWithoutText, 3U);
    EXPECT_EQ(read->loss.partsSkipped, 4U);
    EXPECT_EQ(read->pages, 5U);
}

TEST(Wire, textsInTheTextFormAreTaken) {
    for (const char* text : {"", "a\n", "\ttab\nline\n", "\xC2\xA0 \xC3\x9F \xF0\x9F\x98\x80\n"})
        EXPECT_TRUE(sent(withText(text))) << text;
}

TEST(Wire, textsInAnotherFormAreNotTaken) {
    for (const char* text : {"no line end", "bell \a\n", "carriage return\r\n", "delete \x7F\n", "next line \xC2\x85\n",
                             "half \xC3\n", "surrogate \xED\xA0\x80\n", "\xEF\xBB\xBFmark\n", "form feed\f\n"})
        EXPECT_FALSE(sent(withText(text))) << text;
    EXPECT_FALSE(sent(withText(std::string("nul \0\n", 6))));
}

TEST(Wire, formFeedsAreTakenWithPageMarksOnly) {
    Options options;
    options.pageMarks = PageMarks::formFeed;
    EXPECT_TRUE(sent(withText("page\fpage\n"), options));
    EXPECT_FALSE(sent(withText("page\fpage\n")));
}

TEST(Wire, reasonsThatNoEngineGivesAreNotTaken) {
    for (const Reason reason : {Reason::timeout, Reason::crashed, Reason::unwritable, Reason::skipped})
        EXPECT_FALSE(sent(failed(reason, {}))) << reasonName(reason);
    EXPECT_TRUE(sent(failed(Reason::damaged, {})));
}

TEST(Wire, aTextAndItsReasonFit) {
    Extraction failedWithText = withText("text\n");
    failedWithText.reason = Reason::damaged;
    EXPECT_FALSE(sent(failedWithText));
    Extraction okWithoutText;
    okWithoutText.reason = Reason::ok;
    EXPECT_FALSE(sent(okWithoutText));
    EXPECT_FALSE(decodeAnswer(encodeAnswer(kToken, failed(Reason::damaged, {})), "text\n", kToken, {}));
}

TEST(Wire, detailsAreOneShortLine) {
    EXPECT_FALSE(sent(failed(Reason::damaged, "two\nlines")));
    EXPECT_FALSE(sent(failed(Reason::damaged, "\x1B[31m")));
    EXPECT_EQ(sent(failed(Reason::damaged, std::string(5000, 'x')))->detail.size(), kMaximumDetail);
}

TEST(Wire, aBodyIsTakenWholeOnly) {
    const std::string body = encodeAnswer(kToken, withText("text\n"));
    for (std::size_t size = 0; size < body.size(); ++size)
        EXPECT_FALSE(decodeAnswer(body.substr(0, size), "text\n", kToken, {})) << size;
    EXPECT_FALSE(decodeAnswer(body + 'x', "text\n", kToken, {}));
    EXPECT_TRUE(decodeAnswer(body, "text\n", kToken, {}));
}

TEST(Wire, anAnswerToAnotherRequestIsNotTaken) {
    const std::string body = encodeAnswer(kToken, withText("text\n"));
    EXPECT_FALSE(decodeAnswer(body, "text\n", kToken + 1, {}));
}

TEST(Wire, anotherBuildsGreetingIsNotTaken) {
    const Isolation isolation{7, true, true, true, true};
    std::string greeting = encodeGreeting(isolation);
    EXPECT_EQ(decodeGreeting(greeting), isolation);
    greeting[0] = static_cast<char>(greeting[0] + 1);
    EXPECT_FALSE(decodeGreeting(greeting));
}

TEST(Isolation, isDescribedWithWhatIsMissing) {
    EXPECT_EQ(describe({7, true, true, true, true}),
              "files and network (Landlock 7), system calls, memory, processes, privileges");
    EXPECT_EQ(describe({0, true, false, true, true}),
              "system calls, processes, privileges; not isolated: files and network (Landlock), memory");
    EXPECT_EQ(describe({}),
              "nothing; not isolated: files and network (Landlock), system calls, memory, processes, privileges");
}

} // namespace
} // namespace quillow::worker
