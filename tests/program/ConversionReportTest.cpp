// The outcome of a batch and the lines on standard error.
#include "program/ConversionReport.h"

#include "tests/fakes/FakeMainQueue.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;
using Result = ConversionWatcher::Result;

struct ConversionReportTest : testing::Test {
    ConversionReportTest() {
        report.setHandler([this](const Outcome& outcome) { told.push_back(outcome); });
    }

    FakeMainQueue queue;
    ConversionReport report{queue};
    std::vector<Outcome> told;
};

TEST_F(ConversionReportTest, tellsTheOutcomeOnceAfterTheEntries) {
    for (const QString& path : {u"/in/a.rtf"_s, u"/in/b.rtf"_s}) {
        report.documentBegins(path);
        report.documentEnds(path, path == u"/in/a.rtf"_s ? Result::converted : Result::notConverted, QString());
        queue.addOperation([this] { EXPECT_TRUE(told.empty()) << "the entry comes first"; });
    }
    queue.runAll();
    EXPECT_EQ(told, (std::vector<Outcome>{{2, 1, 0}}));
    report.documentBegins(u"/in/c.rtf"_s);
    report.documentEnds(u"/in/c.rtf"_s, Result::converted, u"/out/c.txt"_s);
    queue.runAll();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[1], (Outcome{1, 0, 0}));
}

TEST_F(ConversionReportTest, tellsTheProgressOfEachBatch) {
    std::vector<int> before;
    report.setProgressHandler([&](int documentsBefore) { before.push_back(documentsBefore); });
    for (int batch = 0; batch < 2; ++batch) {
        for (const QString& path : {u"/in/a.rtf"_s, u"/in/b.rtf"_s, u"/in/c.rtf"_s}) {
            report.documentBegins(path);
            report.documentEnds(path, Result::notConverted, QString());
        }
        queue.runAll();
    }
    EXPECT_EQ(before, (std::vector<int>{0, 1, 2, 0, 1, 2}));
}

TEST_F(ConversionReportTest, eachLineOnStandardErrorNamesItsDocument) {
    testing::internal::CaptureStderr();
    report.documentBegins(u"/in/a.pdf"_s);
    report.tell("PDF document: locked: it needs a password");
    report.documentEnds(u"/in/a.pdf"_s, Result::notConverted, QString());
    report.textNotWritten(u"/in/b.rtf"_s, u"/out/b.txt"_s, u"No space left on device"_s);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "quillow: /in/a.pdf: PDF document: locked: it needs a password\n"
              "quillow: /in/b.rtf: the text is not written to /out/b.txt: No space left on device\n");
    queue.runAll();
    EXPECT_EQ(told, (std::vector<Outcome>{{1, 1, 1}}));
}

TEST_F(ConversionReportTest, aNotificationCountsWhatFailed) {
    using Texts = std::pair<QString, QString>;
    EXPECT_EQ(notificationTexts({3, 0, 0}), Texts(u"3 documents converted"_s, u""_s));
    EXPECT_EQ(notificationTexts({2, 1, 1}), Texts(u"1 document converted"_s, u"1 not converted, 1 not written"_s));
}

} // namespace
} // namespace quillow
