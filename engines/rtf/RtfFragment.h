// RTF without its header: what some converters write as a fragment, and what is only text that begins with a backslash.
#pragma once

#include <string_view>

namespace quillow::rtf {

/// True when text without any "{\rtf" begins as the body of a document does: in a group that opens with \*, or with a control
/// word of RTF. Sources of TeX, paths and patterns are no such text.
[[nodiscard]] bool beginsLikeBody(std::string_view text);

} // namespace quillow::rtf
