#include "base/Replacement.h"

#include <cassert>

namespace quillow {

QString stringByReplacingOccurrences(const QString& text, QStringView target, QStringView replacement) {
    assert(!target.isEmpty());
    qsizetype at = text.indexOf(target);
    if (at < 0) return text;
    // QString::replace moves the rest of the text once for every thousand occurrences.
    QString result;
    result.reserve(text.size());
    qsizetype from = 0;
    for (; at >= 0; at = text.indexOf(target, from)) {
        result += QStringView(text).mid(from, at - from);
        result += replacement;
        from = at + target.size();
    }
    result += QStringView(text).mid(from);
    return result;
}

} // namespace quillow
