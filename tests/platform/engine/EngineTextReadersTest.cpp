#include "platform/engine/EngineTextReaders.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

namespace quillow {
namespace {

struct EngineTextReadersTest : testing::Test {
    Extraction outcome;
    std::vector<std::pair<std::string, DocumentKind>> asked;
    std::vector<std::string> reasons;

    DocumentExtractor extractor() {
        return DocumentExtractor([this](std::string_view line) { reasons.emplace_back(line); },
                                 [this](std::span<const std::byte> bytes, DocumentKind kind) {
                                     asked.emplace_back(
                                         std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), kind);
                                     return outcome;
                                 });
    }
    EngineRtfTextReader rtf{extractor()};
    EngineHtmlTextReader html{extractor()};
    EnginePdfTextReader pdf{extractor()};

    void willAnswer(Reason reason, std::optional<std::string> text, std::string detail = {}) {
        outcome.reason = reason;
        outcome.text = std::move(text);
        outcome.detail = std::move(detail);
    }
};

TEST_F(EngineTextReadersTest, eachReaderAsksForItsOwnKind) {
    willAnswer(Reason::ok, "text\n");
    EXPECT_EQ(rtf.initWithRTF(QByteArray("r")), AttributedString{"text\n"});
    EXPECT_EQ(html.initWithHTML("h"), AttributedString{"text\n"});
    EXPECT_EQ(pdf.stringOfPDF("p"), QByteArray("text\n"));
    const std::vector<std::pair<std::string, DocumentKind>> expected{
        {"r", DocumentKind::rtf}, {"h", DocumentKind::html}, {"p", DocumentKind::pdf}};
    EXPECT_EQ(asked, expected);
    EXPECT_TRUE(reasons.empty());
}

TEST_F(EngineTextReadersTest, absentRtfBytesAnswerNothingWithoutAskingTheEngine) {
    willAnswer(Reason::ok, "text\n");
    EXPECT_FALSE(rtf.initWithRTF(std::nullopt));
    EXPECT_TRUE(asked.empty());
}

TEST_F(EngineTextReadersTest, emptyBytesAreTheEnginesToJudge) {
    willAnswer(Reason::damaged, std::nullopt);
    EXPECT_FALSE(rtf.initWithRTF(QByteArray()));
    EXPECT_FALSE(pdf.stringOfPDF(QByteArray()));
    willAnswer(Reason::okEmpty, "");
    EXPECT_EQ(html.initWithHTML(QByteArray()), AttributedString{""});
    EXPECT_EQ(asked.size(), 3U);
}

TEST_F(EngineTextReadersTest, emptyTextIsAText) {
    willAnswer(Reason::okEmpty, "");
    const std::optional<QByteArray> text = pdf.stringOfPDF("p");
    ASSERT_TRUE(text.has_value());
    EXPECT_TRUE(text->isEmpty());
    EXPECT_TRUE(reasons.empty());
}

TEST_F(EngineTextReadersTest, aCopyThatFindsNoMemoryIsNothingWithItsReasonLogged) {
    EnginePdfTextReader exhausted(DocumentExtractor([this](std::string_view line) { reasons.emplace_back(line); },
                                                    [](auto, auto) -> Extraction { throw std::bad_alloc(); }));
    EXPECT_FALSE(exhausted.stringOfPDF("p"));
    EXPECT_EQ(reasons, std::vector<std::string>{"PDF document: out-of-memory"});
}

TEST_F(EngineTextReadersTest, partialTextCountsAndItsReasonIsLogged) {
    willAnswer(Reason::partial, "page 1\n", "page 2 could not be read");
    EXPECT_EQ(pdf.stringOfPDF("p"), QByteArray("page 1\n"));
    EXPECT_EQ(reasons, (std::vector<std::string>{"PDF document: " + std::string(reasonName(Reason::partial)) +
                                                 ": page 2 could not be read"}));
}

TEST_F(EngineTextReadersTest, everyOtherOutcomeIsNothingWithItsReasonLogged) {
    for (const Reason reason : {Reason::noTextLayer, Reason::wrongType, Reason::damaged, Reason::locked,
                                Reason::tooLarge, Reason::timeout, Reason::outOfMemory, Reason::crashed}) {
        willAnswer(reason, std::nullopt);
        reasons.clear();
        EXPECT_FALSE(html.initWithHTML("h"));
        EXPECT_EQ(reasons, (std::vector<std::string>{"HTML document: " + std::string(reasonName(reason))}));
    }
}

TEST_F(EngineTextReadersTest, textIsKeptByteForByte) {
    const std::string text("a\xC2\xA0z\xE2\x80\xA8\xF0\x9F\x98\x80\n");
    willAnswer(Reason::ok, text);
    EXPECT_EQ(html.initWithHTML("h")->plainUtf8, QByteArray::fromStdString(text));
}

TEST_F(EngineTextReadersTest, absentReasonLogIsNotCalled) {
    willAnswer(Reason::damaged, std::nullopt);
    EnginePdfTextReader silent(
        DocumentExtractor({}, [this](std::span<const std::byte>, DocumentKind) { return outcome; }));
    EXPECT_FALSE(silent.stringOfPDF("p"));
}

} // namespace
} // namespace quillow
