// English titles in a right-to-left layout.
#pragma once

#include <QString>

namespace quillow {

/// The title as a button or a menu shows it in the program's reading direction. Both take the direction of a text from
/// the layout, so in a right-to-left layout "Change…" would read "…Change". A left-to-right mark at the end holds the
/// last signs there. In a left-to-right layout the title is unchanged.
[[nodiscard]] QString directed(const QString& title);

} // namespace quillow
