// What the preferences say while no item is chosen. The logic shows these texts, and the windows make room for the
// longest one.
#pragma once

#include <QString>

namespace quillow {

/// Of the start-up document. deliberate: also of a destination folder that was never chosen, though it says "file".
inline constexpr char16_t kPleaseSelectFile[] = u"Please select a file or change startup option";
/// Of a destination folder that was cleared.
inline constexpr char16_t kPleaseSelectFolder[] = u"Please select a folder or change startup option";

/// Whether the text asks for an item. deliberate: the logic keeps such a text after the user has chosen an item, and
/// counts it as a statement.
[[nodiscard]] inline bool isPromptForItem(const QString& text) { // selector: none
    return text == QStringView(kPleaseSelectFile) || text == QStringView(kPleaseSelectFolder);
}

} // namespace quillow
