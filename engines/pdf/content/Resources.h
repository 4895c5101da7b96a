// The resources of a content stream by their names (ISO 32000-2, 7.8.3).
#pragma once

#include "engines/pdf/fonts/FontCache.h"
#include "engines/pdf/syntax/Document.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// What content streams share to look resources up.
struct ResourceSources {
    Document& document;
    FontCache& fonts;
};

/// The font of an entry of the graphics state parameters (8.4.5, table 57).
struct StateParameters {
    Font* font = nullptr; ///< null if the parameters have none
    double size = 0;
};

class Resources {
public:
    Resources() = default;
    /// What is not in `dictionary` is looked up in `outer`, which must outlive it: producers leave out of a form what
    /// its page has.
    Resources(const Dictionary& dictionary, Resources* outer)
        : dictionary_(dictionary)
        , outer_(outer) {}

    /// Names are as the content has them. A font that is not there is one with the standard encoding.
    [[nodiscard]] Font& font(ResourceSources& sources, std::string_view name);
    [[nodiscard]] const StateParameters& state(ResourceSources& sources, std::string_view name);
    [[nodiscard]] Object xObject(ResourceSources& sources, std::string_view name);
    /// The properties of marked content, not resolved: a group of optional content is known by its reference.
    [[nodiscard]] Object properties(ResourceSources& sources, std::string_view name);

    /// Must be called before the content that the names came from changes in memory.
    void forgetNames();

    /// Entries that look-ups have gone through since the last call.
    [[nodiscard]] std::size_t takeCost();

private:
    enum Category { fonts, states, xObjects, propertyLists, categories };

    /// The values of the names that were used last: content uses few of them again and again.
    template <class Value>
    struct Recent {
        struct Entry {
            std::uint64_t key = 0;
            std::string_view name;
            Value value{};
        };
        [[nodiscard]] Value* find(std::string_view name);
        Value& add(std::string_view name, const Value& value);

        std::array<Entry, 8> entries;
        std::size_t count = 0;
        std::size_t next = 0;
    };

    [[nodiscard]] Object find(Document& document, Category category, std::string_view rawName);
    [[nodiscard]] Dictionary dictionaryOf(Document& document, Category category);

    Dictionary dictionary_;
    Resources* outer_ = nullptr;
    std::array<Dictionary, categories> categories_;
    std::array<bool, categories> isKnown_{};
    Recent<Font*> recentFonts_;
    Recent<StateParameters> recentStates_;
    std::size_t cost_ = 0;
};

} // namespace quillow::pdf
