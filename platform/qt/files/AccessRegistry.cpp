#include "platform/qt/files/AccessRegistry.h"

namespace quillow {

void AccessRegistry::start(const QString& path, AccessMode mode) {
    openings_[path].append(mode);
}

void AccessRegistry::stop(const QString& path) {
    const auto found = openings_.find(path);
    if (found == openings_.end()) return;
    found->removeLast();
    if (found->isEmpty()) openings_.erase(found);
}

bool AccessRegistry::mayWrite(const QString& path) const {
    if (openings_.isEmpty()) return true;
    QString around = path;
    while (true) {
        const auto found = openings_.constFind(around);
        if (found != openings_.constEnd()) return found->contains(AccessMode::readWrite);
        const qsizetype slash = around.lastIndexOf(QLatin1Char('/'));
        if (slash < 0 || around.size() == 1) return true;
        around.truncate(slash > 0 ? slash : 1);
    }
}

} // namespace quillow
