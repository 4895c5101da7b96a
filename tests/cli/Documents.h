// Small documents for tests of the program.
#pragma once

#include "tests/cli/TemporaryFolder.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace quillow::test {

inline constexpr std::string_view kRtf = "{\\rtf1\\ansi Hello\\par World}";
inline constexpr std::string_view kRtfText = "Hello\nWorld\n";
inline constexpr std::string_view kHtml = "<!DOCTYPE html><title>t</title><p>One</p><p>Two</p>";
inline constexpr std::string_view kHtmlText = "One\n\nTwo\n";

/// A PDF of tests/data.
inline std::string pdfPath(const std::string& name) {
    return QUILLOW_SOURCE_DIR "/tests/data/pdf/" + name + ".in";
}

inline std::string pdf(const std::string& name) {
    return readFile(pdfPath(name));
}

inline std::size_t linesOf(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

} // namespace quillow::test
