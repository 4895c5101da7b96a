// Port: a drag from another program while it is over a view of ours.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace quillow {

/// What is done with what is dragged, and the bits of a source's mask of operations.
enum class DragOperation : unsigned { none = 0, copy = 1, link = 2, generic = 4, move = 16 };
using DragOperationMask = unsigned;

[[nodiscard]] inline bool offers(DragOperationMask mask, DragOperation operation) {
    return (mask & static_cast<unsigned>(operation)) != 0;
}

/// The one type that is dragged here: local files, as an array of whole paths.
inline constexpr char16_t kFilenamesPboardType[] = u"NSFilenamesPboardType";

class DraggingInfo {
public:
    virtual ~DraggingInfo() = default;

    /// The operations that the source offers.
    [[nodiscard]] virtual DragOperationMask draggingSourceOperationMask() const = 0;
    /// The types in which the pasteboard can give what is dragged.
    [[nodiscard]] virtual QStringList types() const = 0;
    /// The array of strings that the pasteboard holds for the type; nothing when it has none, or can no longer get it. Asked
    /// for once, when the drag is dropped: another program may have to answer.
    [[nodiscard]] virtual std::optional<QStringList> propertyListForType(const QString& type) const = 0;
};

} // namespace quillow
