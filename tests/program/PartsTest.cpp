// The complete program with its real windows and adapters, over several runs. Each run is a separate process.
#include "tests/platform/FakeTaskbar.h"
#include "tests/platform/PrivateBus.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quillow {
namespace {

using namespace Qt::StringLiterals;

class PartsTest : public testing::Test {
protected:
    /// The lines that the run prints.
    QStringList run(const QStringList& steps) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, home.path());
        for (const char16_t* name : {u"XDG_CONFIG_HOME", u"XDG_DATA_HOME", u"XDG_CACHE_HOME", u"XDG_RUNTIME_DIR"})
            environment.remove(QString::fromUtf16(name));
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, busAddress);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(QUILLOW_BINARY_DIR "/bin/parts_probe"), steps);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    }
    [[nodiscard]] QString folder() const {
        QDir(home.path()).mkpath(u"Texts"_s);
        return home.filePath(u"Texts"_s);
    }

    QString write(const QByteArray& document) {
        QFile file(home.filePath(u"a.rtf"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(document);
        return file.fileName();
    }

    QTemporaryDir home;
    QString busAddress = u"unix:path=/nonexistent"_s;
};

TEST_F(PartsTest, theFirstLaunchSaysThatItWillAsk) {
    EXPECT_EQ(run({u"destination"_s, u"state"_s}),
              (QStringList{u"<ASK WHEN SAVING>"_s, u"Please select a file or change startup option"_s}));
}

TEST_F(PartsTest, aFolderClearedInOneRunIsUnvalidInTheNext) {
    EXPECT_EQ(run({u"fixedFolder"_s, folder(), u"destination"_s, u"state"_s}),
              (QStringList{folder(), u"Valid Bookmark"_s}));
    EXPECT_EQ(run({u"clear"_s, u"state"_s}), QStringList{u"Please select a folder or change startup option"_s});
    EXPECT_EQ(run({u"destination"_s, u"state"_s}),
              (QStringList{u"not chosen yet"_s, u"Unvalid Bookmark. Please re-select"_s}));
}

TEST_F(PartsTest, theWindowMenuListsNeitherTheMainWindowNorThePreferences) {
    EXPECT_EQ(run({u"preferences"_s, u"other=Another"_s, u"windows"_s, u"windowMenu"_s}),
              (QStringList{u"Another,General,Quillow"_s, u"Minimize"_s, u"Show Message Log"_s, u"Main Window"_s,
                           u"Another"_s}));
}

TEST_F(PartsTest, aDroppedDocumentIsConvertedCountedAndLogged) {
    const QString document = write("{\\rtf1 text}");
    EXPECT_EQ(run({u"fixedFolder"_s, folder(), u"drop="_s + document, u"log"_s, u"count"_s}),
              (QStringList{u"Converted "_s + document + u"  >>  "_s + folder() + u"/a.txt"_s, u"1"_s}));
    EXPECT_TRUE(QFile::exists(folder() + u"/a.txt"_s));
}

TEST_F(PartsTest, theTaskbarShowsTheShareOfALongDropThatIsDone) {
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    PrivateBus bus;
    ASSERT_TRUE(bus.isConnected());
    FakeTaskbar taskbar;
    taskbar.listenOn(bus.service());
    busAddress = bus.address();
    const QString document = write("{\\rtf1 " + QByteArray("text ").repeated(20000) + '}');
    // A fast machine needs more documents until a drop is long.
    for (int count = 100; taskbar.updates.isEmpty() && count < 100000; count *= 4) {
        run({u"fixedFolder"_s, folder(), u"dropTimes=%1 %2"_s.arg(QString::number(count), document)});
        taskbar.waitForEarlierSignals(bus.client());
    }
    ASSERT_GE(taskbar.updates.size(), 2);
    const double share = taskbar.updates.constFirst().section(u' ', 1, 1).toDouble();
    EXPECT_GT(share, 0);
    EXPECT_LT(share, 1);
    EXPECT_EQ(taskbar.updates.constLast(), u"application://org.quillow.Quillow.desktop 1 hidden"_s);
}

TEST_F(PartsTest, theDisclosureButtonMakesTheWindowBigAndTheNextRunKeepsIt) {
    EXPECT_EQ(run({u"height"_s, u"big"_s, u"height"_s}), (QStringList{u"255"_s, u"580"_s}));
    EXPECT_EQ(run({u"height"_s}), QStringList{u"580"_s});
}

} // namespace
} // namespace quillow
