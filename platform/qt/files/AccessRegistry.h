// The folders and files that are currently open through bookmarks, and their modes. The bookmark store updates it,
// the file system queries it.
#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace quillow {

enum class AccessMode { readOnly, readWrite };

class AccessRegistry {
public:
    /// Opens the path once more. Nested openings count.
    void start(const QString& path, AccessMode mode);
    /// Ends the latest opening of the path. An extra stop does nothing.
    void stop(const QString& path);

    /// Returns false if all openings of the path are read-only. If the path itself is not open, its nearest enclosing
    /// folder that is open counts. Returns true if there is none.
    [[nodiscard]] bool mayWrite(const QString& path) const;

private:
    QHash<QString, QList<AccessMode>> openings_;
};

} // namespace quillow
