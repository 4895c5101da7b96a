// The release of this program.
#pragma once

#include <cstdint>

namespace quillow {

/// major * 10000 + minor * 100 + patch.
inline constexpr std::int64_t kCurrentRelease = 10501;
/// The same, as shown to the user.
inline constexpr char16_t kCurrentReleaseString[] = u"1.5.1";

inline constexpr char16_t kApplicationName[] = u"Quillow";

} // namespace quillow
