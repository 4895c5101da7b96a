#include "platform/qt/life/HandoverMessage.h"

#include "base/PathBytes.h"

#include <QtEndian>

namespace quillow {
namespace {

constexpr QByteArrayView kTag = "QWLHAND1";
constexpr qsizetype kLengthSize = sizeof(quint32);
constexpr qsizetype kLeadingStrings = 3;

void append(QByteArray& message, const QByteArray& string) {
    char length[kLengthSize];
    qToBigEndian(static_cast<quint32>(string.size()), length);
    message.append(length, kLengthSize).append(string);
}

} // namespace

QByteArray encodedHandover(const Handover& handover) {
    QByteArray message = kTag.toByteArray();
    append(message, handover.startupId);
    append(message, handover.activationToken);
    append(message, handover.folder);
    for (const QByteArray& name : handover.names)
        append(message, name);
    return message;
}

std::optional<Handover> decodedHandover(const QByteArray& message) {
    if (message.size() > kMaximumHandoverSize || !message.startsWith(kTag)) return std::nullopt;
    QList<QByteArray> strings;
    for (qsizetype at = kTag.size(); at < message.size();) {
        if (message.size() - at < kLengthSize) return std::nullopt;
        const qsizetype length = qFromBigEndian<quint32>(message.constData() + at);
        at += kLengthSize;
        if (length > message.size() - at) return std::nullopt;
        strings.append(message.sliced(at, length));
        at += length;
    }
    if (strings.size() < kLeadingStrings) return std::nullopt;
    return Handover{strings[0], strings[1], strings[2], strings.sliced(kLeadingStrings)};
}

QStringList absolutePathsOf(const Handover& handover) {
    QStringList paths;
    for (const QByteArray& name : handover.names) {
        const QByteArray whole = name.startsWith('/') ? name : handover.folder + '/' + name;
        if (name.isEmpty() || !whole.startsWith('/') || whole.contains('\0')) continue;
        if (!name.startsWith('/') && handover.folder.isEmpty()) continue;
        QByteArray path;
        for (const QByteArray& component : whole.split('/')) {
            if (!component.isEmpty() && component != ".") path += '/' + component;
        }
        paths.append(pathFromBytes(path.isEmpty() ? QByteArray("/") : path));
    }
    return paths;
}

} // namespace quillow
