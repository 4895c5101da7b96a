// The generated tables of the collections' characters.
#pragma once

#include "engines/pdf/fonts/CharacterCollections.h"

#include <cstddef>

namespace quillow::pdf {

struct CollectionTable {
    const char16_t* characters; ///< by CID; 0: none; a surrogate: the number of a sequence plus kFirstSurrogate
    std::size_t count;
    const std::uint16_t* starts; ///< of the sequences, one more than there are
    const char32_t* sequences;
};

inline constexpr std::size_t kCollectionCount = 6;
extern const CollectionTable kCollections[kCollectionCount]; ///< in the order of CharacterCollection, from Cns1

} // namespace quillow::pdf
