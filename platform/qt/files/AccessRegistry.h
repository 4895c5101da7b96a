// Which folders and files are open right now through bookmarks, and in which mode. The bookmark store writes it, the file
// system asks it.
#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace quillow {

enum class AccessMode { readOnly, readWrite };

class AccessRegistry {
public:
    /// Each start is one more opening of the path; nested openings count.
    void start(const QString& path, AccessMode mode);
    /// Ends the latest opening of the path; one stop too many does nothing.
    void stop(const QString& path);

    /// False when the innermost opened item that is the path or a folder around it is open for reading only.
    [[nodiscard]] bool mayWrite(const QString& path) const;

private:
    QHash<QString, QList<AccessMode>> openings_;
};

} // namespace quillow
