// The settings file: access by another process, and files that are damaged, hostile or unreadable.
#include "platform/qt/storage/QtDefaults.h"

#include "platform/qt/storage/BoxedText.h"
#include "platform/qt/storage/DefaultsFile.h"
#include "tests/platform/DefaultsSample.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace quillow {
namespace {

const QString kKey = QStringLiteral("aKey");

class QtDefaultsFile : public testing::Test {
protected:
    [[nodiscard]] static QString probe() { return QStringLiteral(QUILLOW_BINARY_DIR "/bin/defaults_probe"); }
    [[nodiscard]] static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    void writeFile(const QByteArray& bytes) const {
        QFile ini(file);
        ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
        ini.write(bytes);
    }
    /// The names in the folder, without locks.
    [[nodiscard]] QStringList names() const {
        QStringList names =
            QDir(folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        names.removeAll(QStringLiteral("defaults.ini.lock"));
        return names;
    }
    /// Opens the store on the bad file, writes a value and opens it again.
    void expectRecovery(const std::string& warning) const {
        testing::internal::CaptureStderr();
        QtDefaults defaults(file);
        defaults.registerDefaults({{kKey, true}});
        EXPECT_EQ(defaults.objectForKey(kKey), Boxed(true));
        EXPECT_FALSE(names().contains(QStringLiteral("defaults.ini.damaged")));
        defaults.setObject(7, QStringLiteral("new"));
        const std::string lines = testing::internal::GetCapturedStderr();
        EXPECT_EQ(lines, "quillow: the settings file " + file.toStdString() + " " + warning + "\n");
        EXPECT_TRUE(names().contains(QStringLiteral("defaults.ini.damaged")));

        testing::internal::CaptureStderr();
        const QtDefaults again(file);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(again.objectForKey(QStringLiteral("new")), Boxed(7));
    }

    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("defaults.ini"));
};

TEST_F(QtDefaultsFile, keepsTypesAndAbsenceFromAnotherProcess) {
    ASSERT_EQ(QProcess::execute(probe(), {QStringLiteral("write"), file}), 0);
    const QtDefaults defaults(file);
    const Boxed::Dictionary sample = defaultsSample();
    for (auto entry = sample.cbegin(); entry != sample.cend(); ++entry)
        EXPECT_EQ(defaults.objectForKey(entry.key()), entry.value()) << entry.key().toStdString();
}

TEST_F(QtDefaultsFile, keepsTypesAndAbsenceForAnotherProcess) {
    QByteArray expected;
    const Boxed::Dictionary sample = defaultsSample();
    QtDefaults defaults(file);
    for (auto entry = sample.cbegin(); entry != sample.cend(); ++entry) {
        defaults.setObject(entry.value(), entry.key());
        expected += textFromBoxed(entry.value()).toLatin1() + '\n';
    }
    QProcess reader;
    reader.start(probe(), {QStringLiteral("read"), file});
    ASSERT_TRUE(reader.waitForFinished());
    EXPECT_EQ(reader.readAllStandardOutput(), expected);
}

TEST_F(QtDefaultsFile, isWholeAtEveryMomentAndAfterAKill) {
    QProcess writer;
    writer.start(probe(), {QStringLiteral("churn"), file});
    while (!QFile::exists(file) && writer.state() != QProcess::NotRunning)
        writer.waitForReadyRead(1);
    for (int round = 0; round < 200; ++round) {
        const DefaultsFileContent content = readDefaultsFile(bytesOf(file));
        ASSERT_EQ(content.condition, FileCondition::whole);
        ASSERT_TRUE(content.values.value(QStringLiteral("churned")).string().has_value());
    }
    writer.kill();
    ASSERT_TRUE(writer.waitForFinished());
    EXPECT_EQ(readDefaultsFile(bytesOf(file)).condition, FileCondition::whole);
    // The lock of the dead process does not block others.
    QtDefaults defaults(file);
    defaults.setObject(1, kKey);
    EXPECT_EQ(QtDefaults(file).objectForKey(kKey), Boxed(1));
}

TEST_F(QtDefaultsFile, twoWritersKeepOneAnothersKeys) {
    QtDefaults first(file);
    QtDefaults second(file);
    first.setObject(1, QStringLiteral("one"));
    second.setObject(2, QStringLiteral("two"));
    first.synchronize();
    EXPECT_EQ(first.objectForKey(QStringLiteral("two")), Boxed(2));
    EXPECT_EQ(QtDefaults(file).objectForKey(QStringLiteral("one")), Boxed(1));
}

TEST_F(QtDefaultsFile, isMadeWithTheFirstValueInAFolderOfItsOwn) {
    const QString deep = folder.filePath(QStringLiteral("a/b/defaults.ini"));
    QtDefaults defaults(deep);
    defaults.registerDefaults({{kKey, 1}});
    defaults.setObject(nullptr, kKey);
    EXPECT_FALSE(QFile::exists(deep));
    defaults.setObject(1, kKey);
    EXPECT_EQ(bytesOf(deep), "[General]\naKey=i:1\n");
}

TEST_F(QtDefaultsFile, aLinkStaysALink) {
    const QString target = folder.filePath(QStringLiteral("kept elsewhere"));
    ASSERT_TRUE(QFile::link(target, file));
    QtDefaults(file).setObject(1, kKey);
    QtDefaults(file).setObject(2, kKey);
    EXPECT_TRUE(QFileInfo(file).isSymLink());
    EXPECT_EQ(bytesOf(target), "[General]\naKey=i:2\n");
}

TEST_F(QtDefaultsFile, aDamagedLineIsNilAndTheOthersHold) {
    writeFile("[General]\na=true\nb=i:12x\nc=q:1\nd=s:%zz\ne=j:////"
              "\nf=x:*\ng=m:9,9,AAAA\nh=x:Yn\n%1=i:1\nnothing\n[x]\ngood=i:3\r\n");
    testing::internal::CaptureStderr();
    QtDefaults defaults(file);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    for (const char16_t key : {u'a', u'b', u'c', u'd', u'e', u'f', u'g', u'h'})
        EXPECT_TRUE(defaults.objectForKey(QString(QChar(key))).isNil()) << static_cast<char>(key);
    EXPECT_EQ(defaults.objectForKey(QStringLiteral("good")), Boxed(3));
    defaults.setObject(4, QStringLiteral("new"));
    EXPECT_EQ(bytesOf(file), "[General]\ngood=i:3\nnew=i:4\n");
}

TEST_F(QtDefaultsFile, aDamagedFileIsKeptAsideBeforeItIsOverwritten) {
    const QByteArray damaged("\0\xFF\xFE garbage\n[General", 21);
    writeFile(damaged);
    expectRecovery("is damaged; what is readable of it is used");
    EXPECT_EQ(bytesOf(file + QStringLiteral(".damaged")), damaged);
}

TEST_F(QtDefaultsFile, aSecondDamagedFileIsKeptToo) {
    writeFile("first");
    QtDefaults(file).setObject(1, kKey);
    writeFile("second");
    QtDefaults(file).setObject(1, kKey);
    EXPECT_EQ(bytesOf(file + QStringLiteral(".damaged")), "first");
    EXPECT_EQ(bytesOf(file + QStringLiteral(".damaged-2")), "second");
}

TEST_F(QtDefaultsFile, aFileCutOffAnywhereStartsTheProgram) {
    QtDefaults(file).setObject(QStringLiteral("some text"), QStringLiteral("text"));
    QtDefaults(file).setObject(QByteArray("bytes"), QStringLiteral("bytes"));
    const QByteArray whole = bytesOf(file);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const DefaultsFileContent content = readDefaultsFile(whole.left(length));
        const Boxed bytes = content.values.value(QStringLiteral("bytes"));
        EXPECT_TRUE(bytes.isNil() || bytes.data().has_value());
    }
}

TEST_F(QtDefaultsFile, aHugeFileIsNotRead) {
    QFile ini(file);
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ASSERT_TRUE(ini.resize(qint64{1} << 40)); // a hole, no blocks
    ini.close();
    expectRecovery("is too large; starting with the usual settings");
}

TEST_F(QtDefaultsFile, aFolderInItsPlaceIsPutAside) {
    ASSERT_TRUE(QDir().mkpath(file + QStringLiteral("/full")));
    expectRecovery("is no file; starting with the usual settings");
}

TEST_F(QtDefaultsFile, aPipeInItsPlaceIsNotWaitedFor) {
    ASSERT_EQ(mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    expectRecovery("is no file; starting with the usual settings");
}

TEST_F(QtDefaultsFile, deeplyNestedBytesAreNoValue) {
    // CBOR: 100,000 nested arrays of one element.
    writeFile("deep=j:" + QByteArray(100000, '\x81').toBase64() + "\nkey=i:1\n");
    testing::internal::CaptureStderr();
    const QtDefaults defaults(file);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(defaults.objectForKey(QStringLiteral("deep")).isNil());
    EXPECT_EQ(defaults.objectForKey(QStringLiteral("key")), Boxed(1));
}

TEST_F(QtDefaultsFile, nestingIsKeptUpToItsLimit) {
    Boxed value = 1;
    for (int level = 0; level < 16; ++level)
        value = Boxed::Array{value};
    QtDefaults(file).setObject(value, kKey);
    EXPECT_EQ(QtDefaults(file).objectForKey(kKey), value);
    EXPECT_TRUE(boxedFromText(textFromBoxed(Boxed::Array{value})).isNil());
    // An array in its text form inside an array in its text form: "gA==" is the Base64 of an empty array.
    EXPECT_TRUE(boxedFromText(QStringLiteral("j:") + QString::fromLatin1(QByteArray("\x66j:gA==").toBase64())).isNil());
}

TEST_F(QtDefaultsFile, valuesHoldForTheRunWhereNothingCanBeWritten) {
    const QString impossible = QStringLiteral("/proc/quillow/defaults.ini");
    testing::internal::CaptureStderr();
    QtDefaults defaults(impossible);
    defaults.setObject(1, QStringLiteral("one"));
    defaults.setObject(2, QStringLiteral("two"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "quillow: the settings cannot be kept: there is no folder for /proc/quillow/defaults.ini\n");
    EXPECT_EQ(defaults.objectForKey(QStringLiteral("one")), Boxed(1));
    EXPECT_EQ(defaults.objectForKey(QStringLiteral("two")), Boxed(2));
}

} // namespace
} // namespace quillow
