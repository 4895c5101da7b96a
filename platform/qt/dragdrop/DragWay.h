// The way of a drag from its source to our window. It determines which actions the drag can name.
#pragma once

#include <functional>

namespace quillow {

enum class DragWay {
    direct,  ///< between two programs of the X server: the drag names all actions that its source offers
    bridged, ///< from a Wayland program to a window under Xwayland: it names one action, copy, or move with Shift held
    wayland, ///< to a Wayland window: it names copy, move, or (from an X11 program under KWin 5.27) no action at all
};

/// Called when a drag enters.
using DragWayFinder = std::function<DragWay()>;

/// The way of the current drag in this process's window system.
[[nodiscard]] DragWay wayOfCurrentDrag();

} // namespace quillow
