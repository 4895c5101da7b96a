// A file system in memory: a tree of files, folders and symbolic links, with unreadable items and a disk that can be full.
#pragma once

#include "platform/FileSystem.h"
#include "tests/fakes/Journal.h"

#include <QMap>
#include <QSet>
#include <QString>

#include <cstdint>

namespace quillow {

class FakeFileSystem final : public FileSystem {
public:
    explicit FakeFileSystem(Journal& journal)
        : journal_(journal) {}

    [[nodiscard]] std::optional<QByteArray> contentsOfFile(const QString& path) const override;
    [[nodiscard]] bool fileExistsAtPath(const QString& path, bool* isDirectory) const override;
    bool writeToFileAtomically(const QByteArray& bytes, const QString& path) override;

    // The tree. Folders on the way to an item come into being with it.
    void addFile(const QString& path, const QByteArray& bytes = {});
    void addFolder(const QString& path);
    void addSymbolicLink(const QString& path, const QString& target);
    void makeUnreadable(const QString& path);
    void remove(const QString& path);
    /// Moves an item with all that is in it; it stays the same item.
    void move(const QString& from, const QString& to);
    void setDiskFull() { isDiskFull_ = true; }

    [[nodiscard]] bool isEmptyFolder(const QString& path) const;
    /// A number that is the item's own and stays with it when it is moved; 0 where nothing stands.
    [[nodiscard]] std::uint64_t itemNumber(const QString& path) const;
    /// Where the item of this number stands; nothing when it is gone.
    [[nodiscard]] std::optional<QString> pathOfItem(std::uint64_t number) const;

    // Folders that were opened through a read-only bookmark refuse writes, at any depth, until they are closed.
    void openReadOnly(const QString& path) { readOnly_.insert(path); }
    void closeReadOnly(const QString& path) { readOnly_.remove(path); }

private:
    enum class Kind { file, folder, symbolicLink };
    struct Item {
        Kind kind = Kind::file;
        QByteArray bytes;
        QString target;
        bool isReadable = true;
        std::uint64_t number = 0;
    };

    void insert(const QString& path, Item item);
    /// The path with every symbolic link followed; nothing when it leads nowhere.
    [[nodiscard]] std::optional<QString> resolved(const QString& path) const;
    [[nodiscard]] const Item* itemAt(const QString& path) const;

    Journal& journal_;
    QMap<QString, Item> items_;
    QSet<QString> readOnly_;
    bool isDiskFull_ = false;
    std::uint64_t lastNumber_ = 0;
};

} // namespace quillow
