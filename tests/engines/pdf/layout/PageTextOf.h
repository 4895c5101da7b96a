// The text of a page in UTF-8, for tests of the layout.
#pragma once

#include "engines/pdf/layout/PageText.h"
#include "tests/engines/pdf/layout/PageBuilder.h"
#include "text/Utf8.h"

#include <string>

namespace quillow::pdf {

inline std::string textOf(const PageBuilder& builder) {
    std::u32string text;
    appendPageText(builder.page(), text);
    std::string utf8;
    for (const char32_t c : text)
        text::appendUtf8(utf8, c);
    return utf8;
}

/// The same without blank lines.
inline std::string linesOf(const PageBuilder& builder) {
    std::string lines;
    for (const char c : textOf(builder))
        if (c != '\n' || (!lines.empty() && lines.back() != '\n')) lines.push_back(c);
    return lines;
}

} // namespace quillow::pdf
