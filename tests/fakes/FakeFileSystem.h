// A file system in memory: a tree of files, folders and symbolic links, with unreadable items and a disk that can be
// full.
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
    [[nodiscard]] bool isTooLarge(const QString& path) const override;
    [[nodiscard]] bool fileExistsAtPath(const QString& path, bool* isDirectory) const override;
    using FileSystem::writeToFileAtomically;
    bool writeToFileAtomically(const QByteArray& bytes, const QString& path, const WriteFailed& failed) override;

    bool createDirectory(const QString& path) override;
    [[nodiscard]] std::optional<QStringList> contentsOfDirectory(const QString& path) const override;
    bool copyItem(const QString& path, const QString& toPath) override;
    bool removeItem(const QString& path) override;

    // The tree. Adding an item also creates its missing parent folders.
    void addFile(const QString& path, const QByteArray& bytes = {});
    void addFolder(const QString& path);
    void addSymbolicLink(const QString& path, const QString& target);
    void makeUnreadable(const QString& path);
    void makeTooLarge(const QString& path);
    void remove(const QString& path);
    /// Moves an item with its contents. It keeps its number.
    void move(const QString& from, const QString& to);
    void setDiskFull() { isDiskFull_ = true; }

    [[nodiscard]] bool isEmptyFolder(const QString& path) const;
    /// The unique number of the item, which it keeps when it is moved; 0 if there is no item.
    [[nodiscard]] std::uint64_t itemNumber(const QString& path) const;
    /// The path of the item with this number; std::nullopt if it no longer exists.
    [[nodiscard]] std::optional<QString> pathOfItem(std::uint64_t number) const;

    // Folders that were opened through a read-only bookmark refuse writes, at any depth, until they are closed.
    void openReadOnly(const QString& path) { readOnly_.insert(path); }
    void closeReadOnly(const QString& path) { readOnly_.remove(path); }

private:
    bool write(const QByteArray& bytes, const QString& path);
    enum class Kind { file, folder, symbolicLink };
    struct Item {
        Kind kind = Kind::file;
        QByteArray bytes;
        QString target;
        bool isReadable = true;
        bool isTooLarge = false;
        std::uint64_t number = 0;
    };

    void insert(const QString& path, Item item);
    /// The path with all symbolic links resolved; std::nullopt if a link is broken.
    [[nodiscard]] std::optional<QString> resolved(const QString& path) const;
    [[nodiscard]] const Item* itemAt(const QString& path) const;

    Journal& journal_;
    QMap<QString, Item> items_;
    QSet<QString> readOnly_;
    bool isDiskFull_ = false;
    std::uint64_t lastNumber_ = 0;
};

} // namespace quillow
