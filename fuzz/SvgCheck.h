// What holds for every picture of a page.
#pragma once

#include "text/Utf8.h"

#include <cstdlib>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// Ends the program if the file is not UTF-8, has a character that XML forbids, a tag that is not closed in its turn,
/// or an element that we do not write: a page may contain text that looks like one.
inline void checkSvg(std::string_view file) {
    const auto require = [](bool condition) {
        if (!condition) std::abort();
    };
    require(text::isValidUtf8(file) && file.ends_with("</svg>\n"));
    std::vector<std::string_view> open;
    for (std::size_t at = 0; at < file.size(); ++at) {
        const auto byte = static_cast<unsigned char>(file[at]);
        require(byte >= 0x20 || byte == '\n' || byte == '\t' || byte == '\r');
        if (byte != '<') continue;
        const std::size_t end = file.find('>', at);
        require(end != std::string_view::npos);
        const std::string_view tag = file.substr(at + 1, end - at - 1);
        require(tag.find('<') == std::string_view::npos);
        at = end;
        if (tag.starts_with('?')) continue;
        if (tag.starts_with('/')) {
            require(!open.empty() && open.back() == tag.substr(1));
            open.pop_back();
            continue;
        }
        const std::string_view name = tag.substr(0, tag.find_first_of(" /"));
        bool isKnown = false;
        for (const std::string_view known : {"svg", "g", "rect", "path", "circle", "text", "title"})
            isKnown = isKnown || name == known;
        require(isKnown);
        if (!tag.ends_with('/')) open.push_back(name);
    }
    require(open.empty());
}

} // namespace quillow::pdf
