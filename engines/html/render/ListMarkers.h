// The markers of list items: CSS Counter Styles 3, sections 6.1 and 6.2.
#pragma once

#include "engines/html/css/Style.h"

#include <string>

namespace quillow::html {

/// The marker with the space after it: "1. ", "iv. ", "• "; empty for ListStyle::none. A number that a style cannot
/// represent (zero, negative, too large) is decimal.
[[nodiscard]] std::string listMarker(ListStyle style, std::int64_t number);

} // namespace quillow::html
