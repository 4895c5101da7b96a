#include "engines/html/tree/NameKey.h"

namespace quillow::html {

template <NameEnd end>
ScannedName scanNamePortable(std::string_view source, std::size_t from) {
    ScannedName name;
    bool holdsNul = false;
    for (; from < source.size() && !endsName(source[from], end); ++from, ++name.length) {
        const char c = source[from];
        if (text::toLower(c) != c) name.asWritten = false;
        if (c == '\0') holdsNul = true;
    }
    if (holdsNul) name.asWritten = false;
    if (name.length <= NameKey::kMaxLength && !holdsNul)
        for (std::size_t i = 0; i < name.length; ++i)
            name.key.put(i, text::toLower(source[from - name.length + i]));
    return name;
}

template ScannedName scanNamePortable<NameEnd::tag>(std::string_view source, std::size_t from);
template ScannedName scanNamePortable<NameEnd::attribute>(std::string_view source, std::size_t from);

} // namespace quillow::html
