// Decides about the hyphens at the ends of joined lines: the document itself shows how its words are written.
#pragma once

#include <string>
#include <string_view>

namespace quillow::pdf {

/// Stands behind a hyphen at the end of a line that was joined with the next one. No text contains it.
inline constexpr char kJoint = '\x01';

/// The text without kJoint, and without the hyphens before it that divide words. A hyphen stays if a capital or a digit
/// follows, or if the word with the hyphen is more frequent in the text than without it. Where the text has neither, it
/// goes if most of the others go.
[[nodiscard]] std::string withoutLineEndHyphens(std::string_view text);

} // namespace quillow::pdf
