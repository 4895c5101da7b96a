// English titles in a right-to-left layout.
#pragma once

#include <QString>

namespace quillow {

/// The title with a left-to-right mark at its end if the layout is right-to-left. Buttons and menus take the direction
/// of a text from the layout, so without the mark "Change…" would read "…Change". In a left-to-right layout the title
/// is unchanged.
[[nodiscard]] QString directed(const QString& title);

} // namespace quillow
