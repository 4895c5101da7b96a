// What several fakes were told, in one order: for tests of "this before that".
#pragma once

#include <QString>
#include <QStringList>

namespace quillow {

class Journal {
public:
    void add(const QString& entry) { entries_.append(entry); }
    [[nodiscard]] const QStringList& entries() const { return entries_; }
    void clear() { entries_.clear(); }

private:
    QStringList entries_;
};

} // namespace quillow
