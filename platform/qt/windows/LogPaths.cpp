#include "platform/qt/windows/LogPaths.h"

namespace quillow {
namespace {

// The texts of the log's entries around the paths.
constexpr QStringView kConverted = u"Converted ";
constexpr QStringView kInto = u"  >>  ";
constexpr QStringView kNoText = u"Not able to extract any text from ";
constexpr QStringView kAfterStamp = u"} ";

} // namespace

std::optional<LogPath> logPathAt(const QString& log, qsizetype position) {
    if (position < 0 || position >= log.size() || log[position] == u'\n') return std::nullopt;
    const qsizetype start = position == 0 ? 0 : log.lastIndexOf(u'\n', position - 1) + 1;
    const qsizetype newline = log.indexOf(u'\n', position);
    const qsizetype end = newline < 0 ? log.size() : newline;
    const QStringView entry = QStringView(log).sliced(start, end - start);

    const auto found = [&](qsizetype from, qsizetype to, bool isText) -> std::optional<LogPath> {
        const qsizetype place = position - start;
        if (place < from || place >= to || entry[from] != u'/') return std::nullopt;
        return LogPath{{start + from, to - from}, entry.sliced(from, to - from).toString(), isText};
    };
    const qsizetype stampEnd = entry.indexOf(kAfterStamp);
    if (stampEnd < 0) return std::nullopt;
    const qsizetype message = stampEnd + kAfterStamp.size();
    if (entry.sliced(message).startsWith(kNoText)) return found(message + kNoText.size(), entry.size(), false);
    if (!entry.sliced(message).startsWith(kConverted)) return std::nullopt;
    const qsizetype document = message + kConverted.size();
    const qsizetype into = entry.lastIndexOf(kInto);
    if (into < document) return std::nullopt;
    if (position - start < into) return found(document, into, false);
    return found(into + kInto.size(), entry.size(), true);
}

} // namespace quillow
