// Which drags the drop area takes, and what it answers: the rule alone, without a window.
#pragma once

#include <QMimeData>
#include <QStringList>

#include <optional>

namespace quillow {

/// Whether the window system can say "link". Wayland's drags know copy, move and ask only.
enum class LinkAction { expressible, missing };

/// The action with which a drag that offers these is answered: link, or, only where link cannot be said, copy; never move.
/// Qt::IgnoreAction when it is refused.
[[nodiscard]] Qt::DropAction answerFor(Qt::DropActions offered, LinkAction linkAction);

/// The paths of the local files in the drag's order, without slashes at their ends; nothing when it is no list of local files:
/// text, an address of the web, or a list in which anything is not local.
[[nodiscard]] std::optional<QStringList> localFilesOf(const QMimeData& data);

} // namespace quillow
