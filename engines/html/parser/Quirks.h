// Quirks mode: which doctypes switch it on.
#pragma once

#include "engines/html/parser/Tokenizer.h"

namespace quillow::html {

/// 13.2.6.4.1: whether a doctype asks for quirks mode.
[[nodiscard]] bool isQuirksDoctype(const Token& doctype);

} // namespace quillow::html
