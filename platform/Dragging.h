// Port: a drag from another program while it is over one of our views.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace quillow {

/// What a drop does with the dragged items. The values are the bits of a source's operation mask.
enum class DragOperation : unsigned { none = 0, copy = 1, link = 2, generic = 4, move = 16 };
using DragOperationMask = unsigned;

[[nodiscard]] inline bool offers(DragOperationMask mask, DragOperation operation) {
    return (mask & static_cast<unsigned>(operation)) != 0;
}

/// The only drag type in use: local files, as an array of absolute paths.
inline constexpr char16_t kFilenamesPboardType[] = u"NSFilenamesPboardType";

class DraggingInfo {
public:
    virtual ~DraggingInfo() = default;

    /// The operations that the source offers.
    [[nodiscard]] virtual DragOperationMask draggingSourceOperationMask() const = 0;
    /// The types in which the pasteboard offers the dragged data.
    [[nodiscard]] virtual QStringList types() const = 0;
    /// The array of strings that the pasteboard holds for the type; std::nullopt if it has none or can no longer
    /// fetch it. Call it once, at the drop: another program may have to respond.
    [[nodiscard]] virtual std::optional<QStringList> propertyListForType(const QString& type) const = 0;
};

} // namespace quillow
