// How a drag of the window system reads to a view, and how the view's answer reads to the window system: the rule alone,
// without a window.
#pragma once

#include "platform/Dragging.h"
#include "platform/qt/dragdrop/DragWay.h"

#include <QMimeData>
#include <QStringList>

#include <optional>

namespace quillow {

/// The source's mask of operations. It has link also where the way cannot name link and copy is offered instead.
[[nodiscard]] DragOperationMask operationMaskOf(Qt::DropActions offered, DragWay way);

/// The action that tells the source what a view answered: for link that is link, or copy where the way cannot name link; for
/// any other answer it is none (Qt::IgnoreAction). None also where the action is not offered. Never move.
[[nodiscard]] Qt::DropAction dropActionFor(DragOperation answer, Qt::DropActions offered, DragWay way);

/// The paths of the local files in the drag's order, without slashes at their ends; nothing when it is no list of local files:
/// text, an address of the web, or a list in which anything is not local.
[[nodiscard]] std::optional<QStringList> localFilesOf(const QMimeData& data);

} // namespace quillow
