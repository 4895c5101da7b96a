// The two file systems on which the contract tests of the file ports run: the fake in memory and a folder of the disk.
#pragma once

#include "platform/qt/AccessRegistry.h"
#include "platform/qt/QtBookmarkStore.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/QtWorkspace.h"
#include "tests/fakes/FakeBookmarkStore.h"
#include "tests/fakes/FakeFileSystem.h"
#include "tests/fakes/FakeWorkspace.h"

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quillow {

struct FakeFileWorld {
    Journal journal;
    FakeFileSystem fileSystem{journal};
    FakeBookmarkStore bookmarkStore{fileSystem, journal};
    FakeWorkspace workspace{fileSystem, journal};

    FakeFileWorld() { fileSystem.addFolder(root()); }
    [[nodiscard]] QString root() const { return QStringLiteral("/home/user"); }
    void addFile(const QString& path, const QByteArray& bytes) { fileSystem.addFile(path, bytes); }
    void addFolder(const QString& path) { fileSystem.addFolder(path); }
    void addSymbolicLink(const QString& path, const QString& target) { fileSystem.addSymbolicLink(path, target); }
    void move(const QString& from, const QString& to) { fileSystem.move(from, to); }
    void remove(const QString& path) { fileSystem.remove(path); }
};

struct DiskFileWorld {
    QTemporaryDir folder;
    AccessRegistry access;
    QtFileSystem fileSystem{access};
    QtBookmarkStore bookmarkStore{access};
    QtWorkspace workspace{QDBusConnection(QStringLiteral("none")), [](const QUrl&) {}};

    [[nodiscard]] QString root() const { return folder.path(); }
    void addFile(const QString& path, const QByteArray& bytes) {
        QDir().mkpath(path.left(path.lastIndexOf(u'/')));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void addFolder(const QString& path) { QDir().mkpath(path); }
    void addSymbolicLink(const QString& path, const QString& target) { QFile::link(target, path); }
    void move(const QString& from, const QString& to) {
        QDir().mkpath(to.left(to.lastIndexOf(u'/')));
        ASSERT_TRUE(QDir().rename(from, to));
    }
    void remove(const QString& path) {
        if (!QDir(path).removeRecursively()) QFile::remove(path);
    }
};

} // namespace quillow
