// The release of this program.
#pragma once

#include <cstdint>

namespace quillow {

/// major * 10000 + minor * 100 + patch. Its text is MWAppSupportUtility::calcReleaseString of it.
inline constexpr std::int64_t kCurrentRelease = 10501;

inline constexpr char16_t kApplicationName[] = u"Quillow";

} // namespace quillow
