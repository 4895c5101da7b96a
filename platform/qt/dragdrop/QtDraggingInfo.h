// Adapts a Qt drag event to the logic's DraggingInfo.
#pragma once

#include "platform/Dragging.h"
#include "platform/qt/dragdrop/DropRule.h"
#include "platform/qt/dragdrop/FileTransferPortal.h"

#include <QDropEvent>

namespace quillow {

/// Must not outlive its event.
class QtDraggingInfo final : public DraggingInfo {
public:
    QtDraggingInfo(const QDropEvent& event, DragWay way, const FileTransferPortal& portal);

    [[nodiscard]] DragOperationMask draggingSourceOperationMask() const override { return mask_; }
    [[nodiscard]] QStringList types() const override;
    /// If the drag has a portal key, the portal's files: this program may not be able to reach the paths in the file
    /// URLs. Without a key, or if the portal returns none, the files of the file URLs.
    [[nodiscard]] std::optional<QStringList> propertyListForType(const QString& type) const override;

private:
    DragOperationMask mask_;
    const QMimeData& data_;
    const FileTransferPortal& portal_;
    std::optional<QStringList> localFiles_;
};

} // namespace quillow
