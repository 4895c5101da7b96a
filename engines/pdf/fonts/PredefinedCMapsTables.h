// The generated tables of the predefined CMaps.
#pragma once

#include "engines/pdf/fonts/PredefinedCMaps.h"

#include <cstddef>

namespace quillow::pdf {

/// A code of an array that has no CID although the CMap's parent has one for it. 0: the parent decides.
inline constexpr std::uint16_t kNoCid = 0xFFFF;

/// Consecutive codes. Either their CIDs are consecutive too (a run), or they are in the pool (an array). Bits of
/// `packed`: of a run 0 to 14 the first CID, 15 to 30 the number of codes less one; of an array 0 to 16 the place in
/// the pool, 17 to 30 the number of codes less one, and bit 31 is set.
struct CMapSegment {
    std::uint32_t firstCode;
    std::uint32_t packed;

    [[nodiscard]] constexpr bool isArray() const { return packed >> 31 != 0; }
    [[nodiscard]] constexpr std::uint32_t lastCode() const {
        return firstCode + (isArray() ? packed >> 17 & 0x3FFF : packed >> 15);
    }
    [[nodiscard]] constexpr std::uint32_t firstCid() const { return packed & 0x7FFF; }
    [[nodiscard]] constexpr std::uint32_t place() const { return packed & 0x1FFFF; }
};

extern const PredefinedCMap kPredefinedCMaps[]; ///< sorted by name
extern const std::size_t kPredefinedCMapCount;

} // namespace quillow::pdf
