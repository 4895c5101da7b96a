// Port: styled text out of an archive.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillow {

class TextUnarchiver {
public:
    virtual ~TextUnarchiver() = default;
    /// The plain characters of the styled text that is the root of a keyed archive; nothing when the bytes are no archive or
    /// their root is no styled text.
    [[nodiscard]] virtual std::optional<QString> stringOfArchivedText(const QByteArray& archive) const = 0;
};

} // namespace quillow
