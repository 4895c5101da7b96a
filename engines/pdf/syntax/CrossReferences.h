// Where the objects of a file are (ISO 32000-2, 7.5.4, 7.5.8).
#pragma once

#include "engines/pdf/syntax/Arena.h"
#include "engines/pdf/syntax/Object.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillow::pdf {

struct CrossReference {
    enum class Kind : std::uint8_t { unknown, free, inFile, inObjectStream };

    std::uint32_t position = 0;   ///< an offset in the file, or the number of the object stream
    std::uint16_t generation = 0; ///< or the index in the object stream
    Kind kind = Kind::unknown;
};

/// The cross-references of all objects and the entries of the trailer that readers need.
class CrossReferences {
public:
    [[nodiscard]] CrossReference find(std::uint32_t number) const {
        return number < entries_.size() ? entries_[number] : CrossReference{};
    }
    /// One more than the highest object number.
    [[nodiscard]] std::size_t size() const { return entries_.size(); }

    /// Sets an entry, unless its number is beyond kMaximumObjectNumber.
    void set(std::uint64_t number, CrossReference entry);
    /// The same if the entry is unknown: sections are read from the newest to the oldest.
    void add(std::uint64_t number, CrossReference entry);

    Dictionary trailer;

private:
    std::vector<CrossReference> entries_;
};

/// The trailer of a document from those of its sections, the newest first: each of the keys Root, Encrypt, ID and Info
/// from the first that has it.
[[nodiscard]] Dictionary mergedTrailer(const std::vector<Dictionary>& newestFirst, Arena& arena);

} // namespace quillow::pdf
