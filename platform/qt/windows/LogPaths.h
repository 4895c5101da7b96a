// The paths in the message log's entries: of documents and of their texts.
#pragma once

#include "platform/LogView.h"

#include <QString>

#include <optional>

namespace quillow {

struct LogPath {
    TextRange range; ///< in the whole log
    QString path;
    bool isText = false; ///< the path of a written text, not of a document
    friend bool operator==(const LogPath&, const LogPath&) = default;
};

/// The path at the position of the log; std::nullopt if there is none. The character at the position counts, so the
/// position after a path is outside.
[[nodiscard]] std::optional<LogPath> logPathAt(const QString& log, qsizetype position);

} // namespace quillow
