#include "platform/qt/storage/QtDefaults.h"

#include "base/PathBytes.h"
#include "platform/qt/storage/BoxedText.h"
#include "platform/qt/storage/DamagedFile.h"
#include "platform/qt/storage/DefaultsFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <cstdio>

namespace quillow {

namespace {

/// A normal settings file holds a few bookmarks and paths, some kilobytes.
constexpr qint64 kLargestFile = qint64{4} * 1024 * 1024;
/// How long to wait for another process's lock on the file, in milliseconds, before going on without the lock.
constexpr int kLockPatience = 2000;

void apply(const Boxed::Dictionary& changes, Boxed::Dictionary& values) {
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        if (textFromBoxed(change.value()).isEmpty())
            values.remove(change.key());
        else
            values.insert(change.key(), change.value());
    }
}

} // namespace

QtDefaults::QtDefaults(const QString& filePath)
    : filePath_(filePath) {
    values_ = readDisk().values;
}

Boxed QtDefaults::objectForKey(const QString& key) const {
    return values_.value(key, registered_.value(key));
}

void QtDefaults::setObject(const Boxed& value, const QString& forKey) {
    unwritten_.insert(forKey, value);
    synchronize();
}

void QtDefaults::registerDefaults(const Boxed::Dictionary& registrationDictionary) {
    for (auto entry = registrationDictionary.cbegin(); entry != registrationDictionary.cend(); ++entry)
        registered_.insert(entry.key(), entry.value());
}

void QtDefaults::synchronize() {
    apply(unwritten_, values_);
    if (!QDir().mkpath(QFileInfo(filePath_).path())) {
        warnOnce(QStringLiteral("the settings cannot be kept: there is no folder for %1").arg(filePath_));
        return;
    }
    QLockFile lock(filePath_ + QStringLiteral(".lock"));
    // Without the lock, a simultaneous change by another process may be lost, but not ours.
    static_cast<void>(lock.tryLock(kLockPatience));

    const Disk disk = readDisk();
    Boxed::Dictionary values = disk.state == DiskState::whole ? disk.values : values_;
    apply(unwritten_, values);
    if (!unwritten_.isEmpty() && values != disk.values) {
        if (disk.state != DiskState::whole && !moveDamagedFileAside(filePath_)) {
            warnOnce(QStringLiteral("the settings cannot be kept: %1 cannot be moved aside").arg(filePath_));
            return;
        }
        if (!write(values)) {
            warnOnce(QStringLiteral("the settings cannot be kept: %1 cannot be written").arg(filePath_));
            return;
        }
    }
    unwritten_.clear();
    values_ = values;
}

QtDefaults::Disk QtDefaults::readDisk() {
    const QFileInfo info(filePath_);
    if (!info.exists()) return {};
    QFile file(filePath_);
    QByteArray bytes;
    QString trouble;
    // A pipe or a device is not opened: a read may never end.
    if (!info.isFile())
        trouble = QStringLiteral("is no file");
    else if (info.size() > kLargestFile)
        trouble = QStringLiteral("is too large");
    else if (!file.open(QIODevice::ReadOnly))
        trouble = QStringLiteral("cannot be opened");
    else if ((bytes = file.read(kLargestFile + 1)).size() > kLargestFile || file.error() != QFileDevice::NoError)
        trouble = QStringLiteral("cannot be read");
    if (!trouble.isEmpty()) {
        warnOnce(QStringLiteral("the settings file %1 %2; starting with the usual settings").arg(filePath_, trouble));
        return {{}, DiskState::unreadable};
    }
    DefaultsFileContent content = readDefaultsFile(bytes);
    if (content.condition == FileCondition::whole) return {content.values, DiskState::whole};
    warnOnce(QStringLiteral("the settings file %1 is damaged; what is readable of it is used").arg(filePath_));
    return {content.values, DiskState::damaged};
}

bool QtDefaults::write(const Boxed::Dictionary& values) const {
    QSaveFile file(filePath_);
    if (!file.open(QIODevice::WriteOnly)) return false;
    const QByteArray bytes = defaultsFileBytes(values);
    return file.write(bytes) == bytes.size() && file.commit();
}

void QtDefaults::warnOnce(const QString& line) {
    if (!hasWarned_) std::fprintf(stderr, "quillow: %s\n", pathToBytes(line).constData());
    hasWarned_ = true;
}

QString QtDefaults::standardFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/org.quillow.Quillow/defaults.ini");
}

} // namespace quillow
