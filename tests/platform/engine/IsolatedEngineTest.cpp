// The desktop's engine: what a document does to its worker is its own outcome, and the next one is read.
#include "platform/engine/IsolatedEngine.h"

#include "platform/engine/EngineTextReaders.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillow {
namespace {

const std::string kAttackWorker = QUILLOW_BINARY_DIR "/bin/attack_worker";

worker::Limits oneSecond() {
    worker::Limits limits;
    limits.time = std::chrono::seconds(1);
    return limits;
}

struct IsolatedEngineTest : testing::Test {
    IsolatedEngine engine{kAttackWorker, oneSecond()};
    std::vector<std::string> reasons;
    DocumentExtractor extractor{
        [this](std::string_view line) { reasons.emplace_back(line); },
        [this](std::span<const std::byte> bytes, DocumentKind kind) { return engine.extract(bytes, kind); }};
    EnginePdfTextReader pdf{extractor};
    EngineRtfTextReader rtf{extractor};
};

TEST_F(IsolatedEngineTest, aDocumentThatCrashesOrHangsIsNothingAndTheNextOneIsRead) {
    EXPECT_FALSE(pdf.stringOfPDF("attack:crash"));
    EXPECT_FALSE(pdf.stringOfPDF("attack:sleep"));
    EXPECT_EQ(rtf.initWithRTF(QByteArray("{\\rtf1 text}")), AttributedString{"text\n"});
    EXPECT_EQ(reasons, (std::vector<std::string>{"PDF document: crashed: its reader used memory that it does not have",
                                                 "PDF document: timeout: it took longer than 1 second"}));
}

TEST_F(IsolatedEngineTest, saysWhatProtectsTheSystem) {
    EXPECT_TRUE(engine.isolationLine().starts_with("Documents are isolated from: ")) << engine.isolationLine();
}

TEST(IsolatedEngine, withoutAWorkerNothingIsReadInTheProgram) {
    IsolatedEngine engine(std::nullopt, {});
    const std::string document = "{\\rtf1 text}";
    const Extraction extraction = engine.extract(std::as_bytes(std::span(document)), DocumentKind::rtf);
    EXPECT_EQ(extraction.reason, Reason::unreadable);
    EXPECT_EQ(extraction.detail, "quillow-worker is not found");
    EXPECT_EQ(engine.isolationLine(), "Documents cannot be read: quillow-worker is not found.");
}

} // namespace
} // namespace quillow
