// Field instructions (RTF 1.9.1, "Fields"): the few that hold the displayed text themselves instead of in the
// result, and links with their target.
#pragma once

#include <string>
#include <string_view>

namespace quillow::rtf {

struct FieldInstruction {
    enum class Kind {
        other,
        character, ///< SYMBOL: `text` is the one character
        text,      ///< EQ, GOTOBUTTON, MACROBUTTON: `text` is the displayed text
        link,      ///< HYPERLINK: `text` is the target
    };
    Kind kind = Kind::other;
    std::string text;
};

/// Parses a field instruction, which is UTF-8 with its RTF escapes resolved.
[[nodiscard]] FieldInstruction readFieldInstruction(std::string_view instruction);

/// Whether an instruction so far is a button's that ends right behind the place or macro that the button is for.
[[nodiscard]] bool endsWithButtonTarget(std::string_view instruction);

} // namespace quillow::rtf
