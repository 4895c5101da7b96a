// The few CSS properties that decide what text is seen, and their values as small numbers.
#pragma once

#include "engines/html/css/CssTokenizer.h"
#include "engines/html/css/Style.h"

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
    all = count ///< the `all` property, which sets each of them
};
enum class Importance : std::uint8_t { normal, important };

/// The CSS-wide values, which every property accepts. A property's own values are those of its enumeration in
/// Style.h; for `content` they are bits of `generated`.
inline constexpr std::uint8_t kInherit = 0xF0;
inline constexpr std::uint8_t kInitial = 0xF1;
inline constexpr std::uint8_t kUnset = 0xF2;
inline constexpr std::uint8_t kRevert = 0xF3;

struct CssDeclaration {
    CssProperty property = CssProperty::display;
    std::uint8_t value = kInherit;
    Importance importance = Importance::normal;
};

/// Parses one declaration without its semicolon, such as "display: none !important". std::nullopt if the property
/// is not one of CssProperty or the value is not valid.
[[nodiscard]] std::optional<CssDeclaration> parseDeclaration(std::string_view declaration, CssStrings& strings);

/// Whether the property is one of CssProperty. There may be white space around its name.
[[nodiscard]] bool isKnownProperty(std::string_view name);

/// Parses the declarations of a style attribute.
[[nodiscard]] std::vector<CssDeclaration> parseStyleAttribute(std::string_view style);

/// A quick check: false for most declarations of other properties, which then need not be parsed. `declaration`
/// begins with the property's name.
[[nodiscard]] bool mayBeRelevant(std::string_view declaration);

} // namespace quillow::html
