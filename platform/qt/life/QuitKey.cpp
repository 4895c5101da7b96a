#include "platform/qt/life/QuitKey.h"

namespace quillow {
namespace {

// X protocol, "Keyboard and Pointer Concepts"; the modifiers 1 and 4 are Alt and Super. The XKB extension puts the
// layout into bits 13 and 14.
constexpr std::uint16_t kShift = 1U << 0;
constexpr std::uint16_t kControl = 1U << 2;
constexpr std::uint16_t kAlt = 1U << 3;
constexpr std::uint16_t kSuper = 1U << 6;
constexpr unsigned kLayoutShift = 13;
constexpr unsigned kLayoutMask = 3;
constexpr std::size_t kSymbolsALayout = 2;

// A symbol of a Latin-1 character is the character's code.
constexpr std::uint32_t kEndOfLatin1 = 0x100;

bool isQ(std::uint32_t symbol) {
    return symbol == 'q' || symbol == 'Q';
}

} // namespace

bool isQuitKey(std::uint16_t state, std::span<const std::uint32_t> symbols) {
    if ((state & (kShift | kControl | kAlt | kSuper)) != kControl) return false;
    const std::size_t layout = (state >> kLayoutShift) & kLayoutMask;
    const std::size_t place = layout * kSymbolsALayout;
    const std::uint32_t symbol = place < symbols.size() ? symbols[place] : 0;
    if (symbol != 0 && symbol < kEndOfLatin1) return isQ(symbol);
    for (std::size_t i = 0; i < symbols.size(); i += kSymbolsALayout)
        if (isQ(symbols[i])) return true;
    return false;
}

} // namespace quillow
