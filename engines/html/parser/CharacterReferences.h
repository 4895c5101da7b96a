// Character references: HTML Standard, sections 13.2.5.72 to 13.2.5.80 and 13.5.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillow::html {

struct NamedReference {
    std::string_view name; ///< without "&"; includes the ";" of a name that ends in one
    char32_t first;
    char32_t second; ///< second code point, or 0
};
/// The named references, sorted by the bytes of their names.
extern const NamedReference kNamedReferences[];
/// For each first character from kFirstReferenceCharacter to kLastReferenceCharacter, the index of the first name
/// that begins with it; then the number of names.
inline constexpr char kFirstReferenceCharacter = 'A';
inline constexpr char kLastReferenceCharacter = 'z';
extern const std::uint16_t kNamedReferenceStarts[kLastReferenceCharacter - kFirstReferenceCharacter + 2];

enum class ReferencePlace { text, attribute };

/// Appends `text` with its character references replaced.
void appendResolvingReferences(std::string& out, std::string_view text, ReferencePlace place);

} // namespace quillow::html
