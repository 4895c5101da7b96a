// The white space of PDF files (ISO 32000-2, 7.2.3, table 1), which the ASCII filters skip.
#pragma once

namespace quillow::pdf {

constexpr bool isFilterWhiteSpace(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

} // namespace quillow::pdf
