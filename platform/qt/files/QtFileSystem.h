// The file system: whole regular files in, atomic replacement out.
#pragma once

#include "platform/FileSystem.h"
#include "platform/qt/files/AccessRegistry.h"
#include "platform/qt/files/UnnamedFile.h"

namespace quillow {

class QtFileSystem final : public FileSystem {
public:
    /// Larger files count as unreadable: a document is held in memory completely.
    static constexpr qint64 kMaximumFileSize = qint64{2} << 30;

    explicit QtFileSystem(const AccessRegistry& access)
        : access_(access) {}

    [[nodiscard]] std::optional<QByteArray> contentsOfFile(const QString& path) const override;
    [[nodiscard]] bool isTooLarge(const QString& path) const override;
    [[nodiscard]] bool fileExistsAtPath(const QString& path, bool* isDirectory) const override;
    using FileSystem::writeToFileAtomically;
    bool writeToFileAtomically(const QByteArray& bytes, const QString& path, const WriteFailed& failed) override;
    /// The system's words for an error number.
    [[nodiscard]] static QString causeOf(int error);
    /// The first part of an atomic write. The caller then syncs the file and gives it its name.
    [[nodiscard]] UnnamedFile writeUnnamed(const QByteArray& bytes, const QString& path);
    bool createDirectory(const QString& path) override;
    [[nodiscard]] std::optional<QStringList> contentsOfDirectory(const QString& path) const override;
    bool copyItem(const QString& path, const QString& toPath) override;
    bool removeItem(const QString& path) override;

private:
    const AccessRegistry& access_;
};

} // namespace quillow
