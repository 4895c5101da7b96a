#include "platform/qt/storage/DefaultsFile.h"

#include "platform/qt/storage/BoxedText.h"

namespace quillow {

namespace {

constexpr char kSection[] = "[General]";

/// Returns whether the line could be read.
bool readLine(const QByteArray& line, Boxed::Dictionary& values) {
    const qsizetype sign = line.indexOf('=');
    if (sign < 0) return false;
    const auto key = stringFromAscii(QString::fromLatin1(line.left(sign)));
    const Boxed value = boxedFromText(QString::fromLatin1(line.mid(sign + 1)));
    if (!key || value.isNil()) return false;
    values.insert(*key, value);
    return true;
}

} // namespace

DefaultsFileContent readDefaultsFile(const QByteArray& bytes) {
    DefaultsFileContent content;
    for (qsizetype start = 0; start < bytes.size();) {
        const qsizetype newline = bytes.indexOf('\n', start);
        const qsizetype end = newline < 0 ? bytes.size() : newline;
        const QByteArray line = bytes.mid(start, end - start).trimmed();
        start = end + 1;
        const bool isNoValue = line.isEmpty() || line.startsWith('#') || line.startsWith(';') || line == kSection;
        if (!isNoValue && !readLine(line, content.values)) content.condition = FileCondition::damaged;
    }
    return content;
}

QByteArray defaultsFileBytes(const Boxed::Dictionary& values) {
    QByteArray bytes = QByteArray(kSection) + '\n';
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry)
        bytes += asciiFromString(entry.key()).toLatin1() + '=' + textFromBoxed(entry.value()).toLatin1() + '\n';
    return bytes;
}

} // namespace quillow
