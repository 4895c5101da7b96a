#include "base/Format.h"

#include <cassert>

namespace quillow {

QString stringWithFormat(const QString& format, std::initializer_list<std::optional<QString>> arguments) {
    const QString blank = QStringLiteral("%@");
    QString result;
    qsizetype from = 0;
    for (const std::optional<QString>& argument : arguments) {
        const qsizetype at = format.indexOf(blank, from);
        assert(at >= 0 && "more arguments than blanks");
        if (at < 0) break;
        result += QStringView(format).mid(from, at - from);
        result += argument.value_or(QStringLiteral("(null)"));
        from = at + blank.size();
    }
    assert(format.indexOf(blank, from) < 0 && "fewer arguments than blanks");
    result += QStringView(format).mid(from);
    return result;
}

} // namespace quillow
