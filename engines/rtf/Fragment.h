// RTF without a header, as some converters write it, and how it differs from text that only begins with a backslash.
#pragma once

#include <string_view>

namespace quillow::rtf {

/// Whether text without any "{\rtf" begins like the body of a document: with a group that opens with \*, or with a
/// control word of RTF. TeX sources, paths and regular expressions do not.
[[nodiscard]] bool beginsLikeBody(std::string_view text);

} // namespace quillow::rtf
