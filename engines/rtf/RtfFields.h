// Field instructions (RTF 1.9.1, "Fields"): the few whose text stands in the instruction and not in the result, and the
// target of a link.
#pragma once

#include <string>
#include <string_view>

namespace quillow::rtf {

struct FieldInstruction {
    enum class Kind {
        other,
        character, ///< SYMBOL: `text` is the one character
        text,      ///< EQ, GOTOBUTTON, MACROBUTTON: `text` is what is shown
        link,      ///< HYPERLINK: `text` is the target
    };
    Kind kind = Kind::other;
    std::string text;
};

/// What an instruction (UTF-8, escapes resolved) says.
[[nodiscard]] FieldInstruction readFieldInstruction(std::string_view instruction);

/// Whether an instruction so far is a button's that ends right behind the place or macro that the button is for.
[[nodiscard]] bool endsWithButtonTarget(std::string_view instruction);

} // namespace quillow::rtf
