// How a drag of the window system reads to a view, and how the view's answer reads to the window system: the rule alone,
// without a window.
#pragma once

#include "platform/Dragging.h"

#include <QMimeData>
#include <QStringList>

#include <optional>

namespace quillow {

/// Whether the window system can say "link". Wayland's drags know copy, move and ask only.
enum class LinkAction { expressible, missing };

/// The source's mask of operations. Where link cannot be said, copy stands for it.
[[nodiscard]] DragOperationMask operationMaskOf(Qt::DropActions offered, LinkAction linkAction);

/// The action that tells the source of a drag that offers these what a view answered: link, or, only where link cannot be
/// said, copy; never move. Qt::IgnoreAction for none, and for what is not offered.
[[nodiscard]] Qt::DropAction dropActionFor(DragOperation answer, Qt::DropActions offered, LinkAction linkAction);

/// The paths of the local files in the drag's order, without slashes at their ends; nothing when it is no list of local files:
/// text, an address of the web, or a list in which anything is not local.
[[nodiscard]] std::optional<QStringList> localFilesOf(const QMimeData& data);

} // namespace quillow
