#include "engines/pdf/content/Resources.h"

#include "text/Ascii.h"

#include <string>
#include <utility>

namespace quillow::pdf {

namespace {

/// The name with #xx replaced (7.3.5).
std::string unescapedName(std::string_view raw) {
    std::string name;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const bool isEscape = raw[i] == '#' && i + 2 < raw.size();
        const int high = isEscape ? text::kHexValues[static_cast<std::uint8_t>(raw[i + 1])] : -1;
        const int low = isEscape ? text::kHexValues[static_cast<std::uint8_t>(raw[i + 2])] : -1;
        if (high >= 0 && low >= 0) {
            name += static_cast<char>(high << 4 | low);
            i += 2;
        } else {
            name += raw[i];
        }
    }
    return name;
}

/// The last bytes of a name, which are all bytes of nearly every one.
std::uint64_t keyOf(std::string_view name) {
    std::uint64_t key = 0;
    for (const char byte : name)
        key = key << 8 | static_cast<std::uint8_t>(byte);
    return key;
}

} // namespace

template <class Value>
Value* Resources::Recent<Value>::find(std::string_view name) {
    const std::uint64_t key = keyOf(name);
    for (std::size_t i = 0; i < count; ++i)
        if (entries[i].key == key && entries[i].name == name) return &entries[i].value;
    return nullptr;
}

template <class Value>
Value& Resources::Recent<Value>::add(std::string_view name, const Value& value) {
    Entry& entry = entries[next];
    next = (next + 1) % entries.size();
    if (count < entries.size()) ++count;
    entry = {keyOf(name), name, value};
    return entry.value;
}

Dictionary Resources::dictionaryOf(Document& document, Category category) {
    constexpr std::array<std::string_view, categories> kNames{"Font", "ExtGState", "XObject", "Properties"};
    if (!std::exchange(isKnown_[category], true))
        categories_[category] = document.get(dictionary_, kNames[category]).dictionary();
    return categories_[category];
}

Object Resources::find(Document& document, Category category, std::string_view rawName) {
    const bool isEscaped = rawName.find('#') != std::string_view::npos;
    const std::string unescaped = isEscaped ? unescapedName(rawName) : std::string();
    const std::string_view name = isEscaped ? std::string_view(unescaped) : rawName;
    for (Resources* level = this; level != nullptr; level = level->outer_) {
        const Dictionary dictionary = level->dictionaryOf(document, category);
        cost_ += dictionary.entries().size();
        const Object found = dictionary.find(name);
        if (!found.isNull()) return found;
    }
    return {};
}

Font& Resources::font(ResourceSources& sources, std::string_view name) {
    if (Font* const* const known = recentFonts_.find(name)) return **known;
    return *recentFonts_.add(name, &sources.fonts.fontOf(find(sources.document, fonts, name)));
}

const StateParameters& Resources::state(ResourceSources& sources, std::string_view name) {
    if (const StateParameters* const known = recentStates_.find(name)) return *known;
    StateParameters parameters;
    const Dictionary dictionary = sources.document.resolve(find(sources.document, states, name)).dictionary();
    cost_ += dictionary.entries().size();
    const Object font = sources.document.get(dictionary, "Font");
    if (font.array().size() == 2) {
        parameters.font = &sources.fonts.fontOf(font.array()[0]);
        parameters.size = sources.document.resolve(font.array()[1]).numberOr(0);
    }
    return recentStates_.add(name, parameters);
}

Object Resources::xObject(ResourceSources& sources, std::string_view name) {
    return sources.document.resolve(find(sources.document, xObjects, name));
}

Object Resources::properties(ResourceSources& sources, std::string_view name) {
    return find(sources.document, propertyLists, name);
}

void Resources::forgetNames() {
    recentFonts_.count = recentFonts_.next = 0;
    recentStates_.count = recentStates_.next = 0;
}

std::size_t Resources::takeCost() {
    return std::exchange(cost_, 0);
}

} // namespace quillow::pdf
