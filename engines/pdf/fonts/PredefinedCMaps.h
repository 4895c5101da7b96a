// The predefined CMaps (ISO 32000-2, 9.7.5.2, table 116) and the others of the same collections.
#pragma once

#include "engines/pdf/fonts/CharacterCollections.h"
#include "engines/pdf/fonts/Codespace.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace quillow::pdf {

struct CMapSegment;

/// What the codes of a CMap are.
enum class CMapCodes : std::uint8_t {
    Legacy,   ///< of a legacy encoding: a CID tells the character
    Identity, ///< the CID itself, in two bytes
    Utf16,    ///< Unicode in one of its forms (UCS-2 is UTF-16 without pairs)
    Utf8,
    Utf32,
};

/// A CMap in tables that are compiled in. All are constants; compare their addresses to compare CMaps.
struct PredefinedCMap {
    std::string_view name;
    CharacterCollection collection;
    CMapCodes codes;
    bool isVertical;
    std::span<const CodespaceRange> codespace;

    // The generated tables: segments sorted by code (by code point for the forms of Unicode). What they do not have,
    // `parent` has.
    std::span<const CMapSegment> segments;
    const std::uint16_t* pool;
    const PredefinedCMap* parent;

    [[nodiscard]] bool isUnicode() const { return codes >= CMapCodes::Utf16; }
    [[nodiscard]] CharacterCode next(const char*& p, const char* end) const { return nextCode(codespace, p, end); }
    /// 0 if there is none. (Where the CMap maps undefined codes to another blank CID, that one.)
    [[nodiscard]] std::uint32_t cidOf(CharacterCode code) const;
    /// If `isUnicode()`: the code point that the code means, 0 if none or one that is not for interchange (private
    /// use).
    [[nodiscard]] char32_t unicodeOf(CharacterCode code) const;
};

/// Null if there is none of this name.
[[nodiscard]] const PredefinedCMap* predefinedCMap(std::string_view name);

/// All, sorted by name.
[[nodiscard]] std::span<const PredefinedCMap> allPredefinedCMaps();

} // namespace quillow::pdf
