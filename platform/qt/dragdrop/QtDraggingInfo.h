// A drag of Qt's as the logic sees it.
#pragma once

#include "platform/Dragging.h"
#include "platform/qt/dragdrop/DropRule.h"
#include "platform/qt/dragdrop/FileTransferPortal.h"

#include <QDropEvent>

namespace quillow {

/// Lives as long as the event it is made of.
class QtDraggingInfo final : public DraggingInfo {
public:
    QtDraggingInfo(const QDropEvent& event, DragWay way, const FileTransferPortal& portal);

    [[nodiscard]] DragOperationMask draggingSourceOperationMask() const override { return mask_; }
    [[nodiscard]] QStringList types() const override;
    /// The portal's files where the drag has a key to them, since the paths in its file URLs may not be reachable from here;
    /// those of the file URLs where it has none, or the portal does not answer.
    [[nodiscard]] std::optional<QStringList> propertyListForType(const QString& type) const override;

private:
    DragOperationMask mask_;
    const QMimeData& data_;
    const FileTransferPortal& portal_;
    std::optional<QStringList> localFiles_;
};

} // namespace quillow
