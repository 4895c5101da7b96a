// Inline images (ISO 32000-2, 8.9.7) are skipped: their data is binary, and nothing but its end says how long it is.
#pragma once

#include "engines/pdf/content/Operands.h"

#include <string_view>

namespace quillow::pdf {

/// `rest` is what follows the operator ID. Returns the place behind the image's EI; the end of `rest` if there is none.
/// `header` has the keys and values between BI and ID.
[[nodiscard]] const char* skipInlineImage(const Operands& header, std::string_view rest);

} // namespace quillow::pdf
