// The two file systems for the contract tests of the file ports: the fake in memory, and a folder on the disk.
#pragma once

#include "base/PathBytes.h"
#include "platform/qt/files/AccessRegistry.h"
#include "platform/qt/files/QtBookmarkStore.h"
#include "platform/qt/files/QtFileSystem.h"
#include "platform/qt/files/QtWorkspace.h"
#include "tests/fakes/FakeBookmarkStore.h"
#include "tests/fakes/FakeFileSystem.h"
#include "tests/fakes/FakeWorkspace.h"

#include <QDBusConnection>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

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

/// Does not access the disk with Qt, because Qt cannot open names that are not UTF-8.
struct DiskFileWorld {
    QTemporaryDir folder;
    AccessRegistry access;
    QtFileSystem fileSystem{access};
    QtBookmarkStore bookmarkStore{access};
    QtWorkspace workspace{[] { return QDBusConnection(QStringLiteral("none")); }, [](const QUrl&) { return true; }};

    DiskFileWorld() = default;
    DiskFileWorld(const DiskFileWorld&) = delete;
    DiskFileWorld& operator=(const DiskFileWorld&) = delete;
    ~DiskFileWorld() { remove(root()); }

    [[nodiscard]] QString root() const { return folder.path(); }
    [[nodiscard]] static std::filesystem::path native(const QString& path) { return pathToBytes(path).toStdString(); }
    void addFile(const QString& path, const QByteArray& bytes) {
        std::filesystem::create_directories(native(path).parent_path());
        std::ofstream file(native(path), std::ios::binary | std::ios::trunc);
        file.write(bytes.constData(), bytes.size());
        ASSERT_TRUE(file.flush().good());
    }
    void addFolder(const QString& path) { std::filesystem::create_directories(native(path)); }
    void addSymbolicLink(const QString& path, const QString& target) {
        std::filesystem::create_symlink(native(target), native(path));
    }
    void move(const QString& from, const QString& to) {
        std::filesystem::create_directories(native(to).parent_path());
        std::filesystem::rename(native(from), native(to));
    }
    void remove(const QString& path) { std::filesystem::remove_all(native(path)); }
};

} // namespace quillow
