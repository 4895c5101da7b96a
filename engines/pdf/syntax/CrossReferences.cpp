#include "engines/pdf/syntax/CrossReferences.h"

#include "engines/pdf/Limits.h"

#include <array>

namespace quillow::pdf {

void CrossReferences::set(std::uint64_t number, CrossReference entry) {
    if (number > kMaximumObjectNumber) return;
    if (number >= entries_.size()) entries_.resize(number + 1);
    entries_[number] = entry;
}

void CrossReferences::add(std::uint64_t number, CrossReference entry) {
    if (number < entries_.size() && entries_[number].kind != CrossReference::Kind::unknown) return;
    set(number, entry);
}

Dictionary mergedTrailer(const std::vector<Dictionary>& newestFirst, Arena& arena) {
    constexpr std::array<std::string_view, 4> kKeys = {"Root", "Encrypt", "ID", "Info"};
    const std::span<DictionaryEntry> entries = arena.make<DictionaryEntry>(kKeys.size());
    std::size_t size = 0;
    for (const std::string_view key : kKeys) {
        for (const Dictionary& trailer : newestFirst) {
            const Object value = trailer.find(key);
            if (value.isNull()) continue;
            new (&entries[size++]) DictionaryEntry{key, value};
            break;
        }
    }
    return Dictionary(entries.first(size));
}

} // namespace quillow::pdf
