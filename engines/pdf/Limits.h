// What the PDF engine does not go beyond, whatever a document asks for.
#pragma once

#include <cstddef>

namespace quillow::pdf {

/// Bytes of a document: sizes inside are kept in 32 signed bits.
inline constexpr std::size_t kMaximumDocument = 0x7FFFFFFF;
/// Pages read; the longest real documents have some ten thousand.
inline constexpr std::size_t kMaximumPages = 100'000;
/// Pages in a row that a document claims and does not have, after which the claim is not believed.
inline constexpr std::size_t kMaximumMissingPages = 1'000;
/// Bytes of text.
inline constexpr std::size_t kMaximumText = std::size_t{512} << 20;

} // namespace quillow::pdf
