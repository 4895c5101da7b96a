// Whether a key press of the X window system is Ctrl+Q.
#pragma once

#include <cstdint>
#include <span>

namespace quillow {

/// `state` is that of the event. `symbols` are the key's symbols in the order of the core keyboard mapping: two for
/// each of two layouts. In a layout without Latin letters the key of the other layout counts, as in Qt's shortcuts.
[[nodiscard]] bool isQuitKey(std::uint16_t state, std::span<const std::uint32_t> symbols);

} // namespace quillow
