// Limits of the PDF engine that hold for every document.
#pragma once

#include <cstddef>

namespace quillow::pdf {

/// Bytes of a document.
inline constexpr std::size_t kMaximumDocument = 0x7FFFFFFF;
/// Pages read; the longest real documents have some ten thousand.
inline constexpr std::size_t kMaximumPages = 100'000;
/// Bytes of text.
inline constexpr std::size_t kMaximumText = std::size_t{512} << 20;
/// Operators of the content of a page, with its forms and annotations; look-ups, long strings and the
/// bytes themselves count too. The largest maps have some millions.
inline constexpr std::size_t kMaximumOperators = 20'000'000;
/// The same of all pages that one reader reads: many pages may share one content stream.
inline constexpr std::size_t kMaximumOperatorsOfDocument = 200'000'000;

/// The highest object number: that of annex C for readers whose integers have 32 bits.
inline constexpr std::size_t kMaximumObjectNumber = 8'388'607;
/// Bytes of one decoded stream. A stream may always grow to four times its encoded size.
inline constexpr std::size_t kMaximumDecodedStream = std::size_t{64} << 20;
inline constexpr std::size_t kAlwaysDecodedRatio = 4;
/// Bytes of all streams that one Document decodes, the same stream counted each time: so many, and so many more for
/// each byte of the file. A stream counts as so many bytes at least.
inline constexpr std::size_t kMaximumDecodedTotal = std::size_t{512} << 20;
inline constexpr std::size_t kDecodedTotalRatio = 32;
inline constexpr std::size_t kLeastDecoded = 64;
/// Bytes of the objects that one Document keeps parsed, and of the object streams that it keeps decoded: so many each,
/// and so many more for each byte of the file.
inline constexpr std::size_t kMaximumObjectMemory = std::size_t{64} << 20;
inline constexpr std::size_t kObjectMemoryRatio = 2;
/// Bytes that one Document parses objects from, the same bytes counted each time.
inline constexpr std::size_t kMaximumParsed = std::size_t{256} << 20;
inline constexpr std::size_t kParsedRatio = 16;
/// References that one Document follows: so many, and so many more for each byte of the file.
inline constexpr std::size_t kMaximumFollowed = 100'000'000;
inline constexpr std::size_t kFollowedRatio = 16;

} // namespace quillow::pdf
