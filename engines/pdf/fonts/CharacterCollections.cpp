#include "engines/pdf/fonts/CharacterCollections.h"

#include "engines/pdf/fonts/CharacterCollectionsTables.h"
#include "text/Unicode.h"

namespace quillow::pdf {

namespace {

struct NamedCollection {
    std::string_view ordering;
    CharacterCollection collection;
};

constexpr NamedCollection kNames[] = {
    {"CNS1", CharacterCollection::Cns1},     {"GB1", CharacterCollection::Gb1},
    {"Japan1", CharacterCollection::Japan1}, {"Japan2", CharacterCollection::Japan2},
    {"Korea1", CharacterCollection::Korea1}, {"KR", CharacterCollection::Kr},
};

} // namespace

CharacterCollection collectionOf(std::string_view registry, std::string_view ordering) {
    if (registry != "Adobe") return CharacterCollection::Unknown;
    for (const NamedCollection& entry : kNames) {
        if (entry.ordering == ordering) return entry.collection;
    }
    return CharacterCollection::Unknown;
}

GlyphText unicodeOfCid(CharacterCollection collection, std::uint32_t cid) {
    if (collection == CharacterCollection::Unknown) return {};
    const CollectionTable& table = kCollections[static_cast<std::size_t>(collection) - 1];
    if (cid >= table.count) return {};
    const char16_t value = table.characters[cid];
    if (value == 0) return {};
    if (!text::isSurrogate(value)) return GlyphText(value);
    const std::size_t sequence = value - text::kFirstSurrogate;
    GlyphText result;
    for (std::size_t i = table.starts[sequence]; i < table.starts[sequence + 1]; ++i)
        result.append(table.sequences[i]);
    return result;
}

} // namespace quillow::pdf
