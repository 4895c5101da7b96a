// Translates a drag of the window system for a view, and the view's response for the window system. Needs no window.
#pragma once

#include "platform/Dragging.h"
#include "platform/qt/dragdrop/DragWay.h"

#include <QMimeData>
#include <QStringList>

#include <optional>

namespace quillow {

/// The source's operation mask. It also contains link if the way cannot name link and copy is offered instead.
[[nodiscard]] DragOperationMask operationMaskOf(Qt::DropActions offered, DragWay way);

/// The action that reports a view's response to the source. For link it is link, or copy if the way cannot name link.
/// For any other response, or if the action is not offered, it is Qt::IgnoreAction. It is never move.
[[nodiscard]] Qt::DropAction dropActionFor(DragOperation answer, Qt::DropActions offered, DragWay way);

/// The paths of the local files in the drag's order, without trailing slashes; std::nullopt if the data is not a list
/// of local files only, such as text, a web address, or a list with any item that is not local.
[[nodiscard]] std::optional<QStringList> localFilesOf(const QMimeData& data);

} // namespace quillow
