// Character references: HTML Standard, sections 13.2.5.72 to 13.2.5.80 and 13.5.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillow::html {

struct NamedReference {
    std::string_view name; ///< without "&", with ";" where it has one
    char32_t first;
    char32_t second; ///< or 0
};
/// Sorted by name, byte by byte.
extern const NamedReference kNamedReferences[];
/// Where the names begin that begin with each character from the first to the last, and the number of all names.
inline constexpr char kFirstReferenceCharacter = 'A';
inline constexpr char kLastReferenceCharacter = 'z';
extern const std::uint16_t kNamedReferenceStarts[kLastReferenceCharacter - kFirstReferenceCharacter + 2];

enum class ReferencePlace { text, attribute };

/// Appends `text` with its character references replaced.
void appendResolvingReferences(std::string& out, std::string_view text, ReferencePlace place);

} // namespace quillow::html
