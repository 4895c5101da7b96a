// Port: styled text out of an archive.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillow {

class TextUnarchiver {
public:
    virtual ~TextUnarchiver() = default;
    /// The plain characters of the styled text that is the root of an archive, keyed or of the older, unkeyed form; nothing
    /// when the bytes are no archive or their root is no styled text.
    [[nodiscard]] virtual std::optional<QString> stringOfArchivedText(const QByteArray& archive) const = 0;
};

} // namespace quillow
