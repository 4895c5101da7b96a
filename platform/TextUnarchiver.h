// Port: reads styled text from an archive.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillow {

class TextUnarchiver {
public:
    virtual ~TextUnarchiver() = default;
    /// The plain characters of the styled text at the root of an archive, keyed or in the older unkeyed form;
    /// std::nullopt if the bytes are not an archive or the root is not styled text.
    [[nodiscard]] virtual std::optional<QString> stringOfArchivedText(const QByteArray& archive) const = 0;
};

} // namespace quillow
