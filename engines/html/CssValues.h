// The few CSS properties that decide what text is seen, and their values as small numbers.
#pragma once

#include "engines/html/CssTokenizer.h"
#include "engines/html/Style.h"

#include <optional>
#include <vector>

namespace quillow::html {

enum class CssProperty : std::uint8_t {
    display,
    visibility,
    whiteSpace,
    listStyle,
    floating,
    position,
    content,
    boxOrient,
    lineClamp,
    count,
    all = count ///< stands for each of them
};
enum class Importance : std::uint8_t { normal, important };

/// The values that every property takes beside its own; a property's own values are those of its enumeration in Style.
inline constexpr std::uint8_t kInherit = 0xF0;
inline constexpr std::uint8_t kInitial = 0xF1;
inline constexpr std::uint8_t kUnset = 0xF2;
inline constexpr std::uint8_t kRevert = 0xF3;

struct CssDeclaration {
    CssProperty property = CssProperty::display;
    std::uint8_t value = kInherit;
    Importance importance = Importance::normal;
};

/// One declaration without its semicolon, "display: none !important"; nothing when it is of no interest or not valid.
[[nodiscard]] std::optional<CssDeclaration> parseDeclaration(std::string_view declaration, CssStrings& strings);

/// Whether values of a property are looked at; there may be white space around its name.
[[nodiscard]] bool isKnownProperty(std::string_view name);

/// The declarations of a style attribute.
[[nodiscard]] std::vector<CssDeclaration> parseStyleAttribute(std::string_view style);

/// False for most declarations of other properties, which need not be parsed at all. Nothing stands before the property's name.
[[nodiscard]] bool mayBeRelevant(std::string_view declaration);

} // namespace quillow::html
