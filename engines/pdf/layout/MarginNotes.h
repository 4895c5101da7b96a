// Notes in the margin that the content stream draws in the middle of the text beside them.
#pragma once

#include "engines/pdf/layout/Order.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// Moves the notes of `order`, which lists items in reading order, behind the text that they interrupt.
void placeMarginNotes(std::span<const Item> items, std::vector<std::uint32_t>& order);

} // namespace quillow::pdf
