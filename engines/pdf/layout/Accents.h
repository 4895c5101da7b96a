// Accents that are drawn as characters of their own over or under a letter, as TeX does with its older fonts.
#pragma once

namespace quillow::pdf {

/// Whether it is a spacing accent, such as U+00A8.
[[nodiscard]] bool isAccent(char32_t character);

/// The letter with the accent, or 0 if Unicode has no such letter.
[[nodiscard]] char32_t composed(char32_t letter, char32_t accent);

} // namespace quillow::pdf
