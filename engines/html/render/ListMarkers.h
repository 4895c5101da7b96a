// The markers of ordered lists: CSS Counter Styles 3, sections 6.1 and 6.2.
#pragma once

#include "engines/html/css/Style.h"

#include <string>

namespace quillow::html {

/// "1. ", "iv. ", "• "; empty for ListStyle::none. Numbers that a style can't write (zero, too large) are decimal.
[[nodiscard]] std::string listMarker(ListStyle style, std::int64_t number);

} // namespace quillow::html
