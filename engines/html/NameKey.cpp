#include "engines/html/NameKey.h"

namespace quillow::html {

template <NameEnd end>
ScannedName scanNamePortable(std::string_view source, std::size_t from) {
    ScannedName name;
    bool holdsNul = false;
    for (; from < source.size() && !endsName(source[from], end); ++from, ++name.length) {
        const char c = source[from];
        if (name.length < NameKey::kMaxLength) name.key.put(name.length, toLower(c));
        if (c == '\0' || toLower(c) != c) name.asWritten = false;
        holdsNul = holdsNul || c == '\0';
    }
    if (name.length > NameKey::kMaxLength || holdsNul) name.key = {};
    return name;
}

template ScannedName scanNamePortable<NameEnd::tag>(std::string_view source, std::size_t from);
template ScannedName scanNamePortable<NameEnd::attribute>(std::string_view source, std::size_t from);

} // namespace quillow::html
