// The lists of glyph names, encodings and charsets to which font programs refer by number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillow::pdf {

/// The name of a glyph in the standard Macintosh order (OpenType 1.9, 'post'), empty if there is none.
inline constexpr std::size_t kMacintoshGlyphs = 258;
[[nodiscard]] std::string_view macintoshGlyphName(std::size_t index);

/// A standard string of the Compact Font Format (Technical Note 5176, appendix A), empty if there is none.
inline constexpr std::size_t kCffStandardStrings = 391;
[[nodiscard]] std::string_view cffStandardString(std::size_t id);

/// Consecutive codes with consecutive string numbers. In a charset the first code is a glyph index.
struct StringIdRun {
    std::uint16_t firstCode;
    std::uint16_t firstId;
    std::uint16_t count;
};

/// Appendix B: the standard and the expert encoding.
extern const std::span<const StringIdRun> kCffStandardEncoding;
extern const std::span<const StringIdRun> kCffExpertEncoding;
/// Appendix C: the charsets ISOAdobe, Expert and ExpertSubset.
extern const std::span<const StringIdRun> kCffIsoAdobeCharset;
extern const std::span<const StringIdRun> kCffExpertCharset;
extern const std::span<const StringIdRun> kCffExpertSubsetCharset;

/// The string number of a code or glyph in one of these lists, or 0.
[[nodiscard]] std::uint16_t stringIdOf(std::span<const StringIdRun> runs, std::size_t code);

} // namespace quillow::pdf
