// The whole program in its own process, without a screen: the documents of the first and later starts, and the end.
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>
#include <signal.h>

#include <functional>
#include <memory>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMostMilliseconds = 60000;

bool comesTrue(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    for (timer.start(); !condition(); QThread::msleep(10))
        if (timer.elapsed() > kMostMilliseconds) return false;
    return true;
}

class LifeTest : public testing::Test {
protected:
    LifeTest() {
        QDir(home.path()).mkpath(u"Texts"_s);
        QDir(home.path()).mkpath(u"run"_s);
        QFile::setPermissions(home.filePath(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert(u"HOME"_s, home.path());
        for (const char16_t* name : {u"XDG_CONFIG_HOME", u"XDG_DATA_HOME", u"XDG_CACHE_HOME"})
            environment.remove(QString::fromUtf16(name));
        environment.insert(u"XDG_RUNTIME_DIR"_s, home.filePath(u"run"_s));
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
        const auto probe = started(u"parts_probe"_s, {u"fixedFolder"_s, home.filePath(u"Texts"_s)});
        EXPECT_TRUE(probe->waitForFinished(kMostMilliseconds));
    }

    std::unique_ptr<QProcess> started(const QString& program, const QStringList& arguments) const {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(home.path());
        process->start(QStringLiteral(QUILLOW_BINARY_DIR "/bin/") + program, arguments);
        EXPECT_TRUE(process->waitForStarted(kMostMilliseconds));
        return process;
    }
    QString document(const QString& name, const QByteArray& content = "{\\rtf1 text}") const {
        QFile file(home.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return name;
    }
    [[nodiscard]] bool isConverted(const QString& text) const {
        return comesTrue([&] { return QFile::exists(home.filePath(u"Texts/"_s + text)); });
    }
    static void expectEndBySignal(QProcess& process) {
        ::kill(static_cast<pid_t>(process.processId()), SIGTERM);
        EXPECT_TRUE(process.waitForFinished(kMostMilliseconds));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
    }

    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

TEST_F(LifeTest, theDocumentsOfAStartAreConvertedFromItsFolder) {
    const auto program = started(u"quillow"_s, {document(u"a.rtf"_s), document(u"b.rtf"_s)});
    EXPECT_TRUE(isConverted(u"a.txt"_s));
    EXPECT_TRUE(isConverted(u"b.txt"_s));
    expectEndBySignal(*program);
}

TEST_F(LifeTest, aLaterStartHandsItsDocumentsOverAndEnds) {
    const auto program = started(u"quillow"_s, {document(u"a.rtf"_s)});
    EXPECT_TRUE(isConverted(u"a.txt"_s));

    const auto later = started(u"quillow"_s, {document(u"b.rtf"_s)});

    EXPECT_TRUE(later->waitForFinished(kMostMilliseconds));
    EXPECT_EQ(later->exitCode(), 0);
    EXPECT_TRUE(isConverted(u"b.txt"_s));
    EXPECT_EQ(program->state(), QProcess::Running);
    expectEndBySignal(*program);
}

TEST_F(LifeTest, aStartAfterTheEndIsOnItsOwn) {
    expectEndBySignal(*[this] {
        auto program = started(u"quillow"_s, {document(u"a.rtf"_s)});
        EXPECT_TRUE(isConverted(u"a.txt"_s));
        return program;
    }());
    const auto next = started(u"quillow"_s, {document(u"b.rtf"_s)});
    EXPECT_TRUE(isConverted(u"b.txt"_s));
    EXPECT_EQ(next->state(), QProcess::Running);
    expectEndBySignal(*next);
}

TEST_F(LifeTest, whyADocumentGaveNoTextIsToldOnStandardError) {
    const auto program = started(u"quillow"_s, {document(u"bad.pdf"_s, "%PDF-1.4 cut short"), document(u"b.rtf"_s)});
    EXPECT_TRUE(isConverted(u"b.txt"_s));
    expectEndBySignal(*program);
    EXPECT_TRUE(QString::fromUtf8(program->readAllStandardError())
                    .contains(u"quillow: "_s + home.filePath(u"bad.pdf"_s) + u": PDF document: "_s));
}

TEST_F(LifeTest, aTextThatCannotBeWrittenIsToldOnStandardError) {
    QDir(home.path()).mkpath(u"Texts/a.txt"_s);
    const auto program = started(u"quillow"_s, {document(u"a.rtf"_s), document(u"b.rtf"_s)});
    EXPECT_TRUE(isConverted(u"b.txt"_s));
    expectEndBySignal(*program);
    const QString line = u"quillow: "_s + home.filePath(u"a.rtf"_s) + u": the text is not written to "_s +
                         home.filePath(u"Texts/a.txt"_s) + u": Is a directory\n"_s;
    EXPECT_EQ(QString::fromUtf8(program->readAllStandardError()).count(line), 1);
}

TEST_F(LifeTest, whatWasLoggedIsInTheNextStartsLog) {
    const auto program = started(u"quillow"_s, {document(u"a.rtf"_s)});
    EXPECT_TRUE(isConverted(u"a.txt"_s));
    expectEndBySignal(*program);
    const auto probe = started(u"parts_probe"_s, {u"log"_s});
    EXPECT_TRUE(probe->waitForFinished(kMostMilliseconds));
    EXPECT_TRUE(QString::fromUtf8(probe->readAllStandardOutput()).contains(u"a.rtf  >>  "_s));
}

} // namespace
} // namespace quillow
