// Maps presentation forms (ligatures, Arabic joining forms) to their plain letters: NFKC of the three blocks of
// presentation forms, and of no other block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::pdf {

/// The plain letters of a presentation form; empty for every other character.
[[nodiscard]] std::u16string_view plainLetters(char32_t codePoint);

/// One entry of the table, sorted by code.
struct PresentationForm {
    std::uint16_t code;
    std::uint16_t begin; ///< offset in kPresentationFormPool
    std::uint16_t length;
};
extern const char16_t kPresentationFormPool[];
extern const PresentationForm kPresentationForms[];
extern const std::size_t kPresentationFormCount;

} // namespace quillow::pdf
