#include "base/Outcome.h"

#include <QStringList>

namespace quillow {

QString Outcome::remark() const {
    QStringList parts;
    // The message of a single document says itself that it was not converted.
    if (notConverted > 0 && documents > 1) parts.append(QStringLiteral("%1 not converted").arg(notConverted));
    if (notWritten > 0) parts.append(QStringLiteral("%1 not written").arg(notWritten));
    return parts.join(QStringLiteral(" \u00B7 "));
}

} // namespace quillow
