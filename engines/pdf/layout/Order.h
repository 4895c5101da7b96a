// The reading order of what is on a page: that of the content stream, unless the page itself shows that it is not.
#pragma once

#include "engines/pdf/layout/Evidence.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// A line of text or a table, with its place.
struct Item {
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
    float size = 0; ///< of the font

    [[nodiscard]] float height() const { return top - bottom; }
};

/// Where the text is from. Recognisers write the parts of a scan in the order in which they have read them.
enum class TextSource : bool { program, recogniser };

/// The indices of items in reading order. `items` are in content order. The cuts are added to `evidence`.
[[nodiscard]] std::vector<std::uint32_t> readingOrder(std::span<const Item> items, TextSource source,
                                                      Evidence* evidence = nullptr);

} // namespace quillow::pdf
