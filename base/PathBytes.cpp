#include "base/PathBytes.h"

#include <cstddef>

namespace quillow {
namespace {

constexpr char16_t kEscapeBase = 0xDC00;

bool isEscapedByte(char16_t unit) {
    return unit >= kEscapeBase + 0x80 && unit <= kEscapeBase + 0xFF;
}

/// Length of the well-formed UTF-8 sequence at `at` (Unicode 15, table 3-7), or 0.
qsizetype sequenceLength(const QByteArray& bytes, qsizetype at) {
    const auto byte = [&](qsizetype i) -> unsigned {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
    };
    const auto isTail = [&](qsizetype i) { return byte(i) >= 0x80 && byte(i) <= 0xBF; };
    const unsigned lead = byte(at);
    const unsigned second = byte(at + 1);
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return isTail(at + 1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F)) return 0;
        return isTail(at + 1) && isTail(at + 2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        if ((lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) return 0;
        return isTail(at + 1) && isTail(at + 2) && isTail(at + 3) ? 4 : 0;
    }
    return 0;
}

/// The text of valid UTF-8. QString drops a byte order mark at the beginning, but a file name may begin with one.
QString textOf(QByteArrayView utf8) {
    const QString text = QString::fromUtf8(utf8);
    return utf8.startsWith("\xEF\xBB\xBF") ? QChar(QChar::ByteOrderMark) + text : text;
}

} // namespace

QByteArray pathToBytes(const QString& path) {
    QByteArray bytes;
    qsizetype start = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const bool isPaired = i > 0 && path[i - 1].isHighSurrogate();
        if (isPaired || !isEscapedByte(path[i].unicode())) continue;
        bytes += QStringView(path).mid(start, i - start).toUtf8();
        bytes += static_cast<char>(path[i].unicode() - kEscapeBase);
        start = i + 1;
    }
    return bytes + QStringView(path).mid(start).toUtf8();
}

QString pathFromBytes(const QByteArray& bytes) {
    QString path;
    qsizetype start = 0;
    for (qsizetype i = 0; i < bytes.size();) {
        const qsizetype length = sequenceLength(bytes, i);
        if (length > 0) {
            i += length;
            continue;
        }
        path += textOf(QByteArrayView(bytes).sliced(start, i - start));
        path += QChar(static_cast<char16_t>(kEscapeBase + static_cast<unsigned char>(bytes[i])));
        start = ++i;
    }
    return path + textOf(QByteArrayView(bytes).sliced(start));
}

QString pathFromFileUrl(const QUrl& url) {
    QByteArray bytes = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    while (bytes.size() > 1 && bytes.endsWith('/'))
        bytes.chop(1);
    return pathFromBytes(bytes);
}

QUrl fileUrlFromPath(const QString& path) {
    return QUrl::fromEncoded("file://" + pathToBytes(path).toPercentEncoding("/"), QUrl::StrictMode);
}

} // namespace quillow
