// The command line of the desktop program: which arguments it accepts, and which it handles without a window.
#include "program/CommandLine.h"

#include <QDir>
#include <QProcess>

#include <gtest/gtest.h>

#include <vector>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

Handover handoverOfWords(std::vector<QByteArray> words, const LauncherTraces& traces = {}) {
    words.insert(words.begin(), "quillow");
    std::vector<char*> pointers;
    for (QByteArray& word : words)
        pointers.push_back(word.data());
    return handoverOf(*QCoreApplication::instance(), static_cast<int>(pointers.size()), pointers.data(), traces);
}

struct Answer {
    int exitCode = -1;
    QString output;
    QString errors;
};

Answer answerTo(const QString& option) {
    QProcess process;
    process.start(QStringLiteral(QUILLOW_BINARY_DIR "/bin/quillow"), {option});
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST(CommandLine, namesAreTakenInTheirOrderAndBytes) {
    EXPECT_EQ(handoverOfWords({"b.rtf", "a\xFF.pdf", ""}).names, (QList<QByteArray>{"b.rtf", "a\xFF.pdf", ""}));
    EXPECT_EQ(handoverOfWords({}).names, QList<QByteArray>());
}

TEST(CommandLine, optionsAreNoNames) {
    EXPECT_EQ(handoverOfWords({"-x", "a.rtf", "--long"}).names, QList<QByteArray>{"a.rtf"});
}

TEST(CommandLine, aSingleHyphenIsAName) {
    EXPECT_EQ(handoverOfWords({"-", "a.rtf"}).names, (QList<QByteArray>{"-", "a.rtf"}));
}

TEST(CommandLine, everythingAfterTwoHyphensIsAName) {
    EXPECT_EQ(handoverOfWords({"-x", "--", "-y", "--", "a.rtf"}).names, (QList<QByteArray>{"-y", "--", "a.rtf"}));
}

TEST(CommandLine, theLaunchersTracesAndTheWorkingFolderAreHandedOver) {
    const Handover handover = handoverOfWords({}, {"startup", "token"});
    EXPECT_EQ(handover.startupId, QByteArray("startup"));
    EXPECT_EQ(handover.activationToken, QByteArray("token"));
    EXPECT_EQ(QFile::decodeName(handover.folder), QDir::current().canonicalPath());
}

TEST(CommandLine, optionsAreAnsweredWithoutAWindow) {
    EXPECT_EQ(answerTo(u"--version"_s).output, u"Quillow 1.5.1\n"_s);
    const Answer help = answerTo(u"--help"_s);
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.output.contains(u"[FILE...]"_s)) << help.output.toStdString();
    const Answer unknown = answerTo(u"--nonsense"_s);
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_TRUE(unknown.errors.contains(u"nonsense"_s)) << unknown.errors.toStdString();
}

} // namespace
} // namespace quillow
