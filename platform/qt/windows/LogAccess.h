// The message log for assistive tools. Qt 6.4 gives no character of a plain text view its place: every line of the
// text is in the first one's place, and no place has a character.
#pragma once

namespace quillow {

/// From now on assistive tools get this for each QtLogView.
void installLogAccess();

} // namespace quillow
