// Accents that are drawn as characters of their own over or under a letter, as TeX does with its older fonts.
#pragma once

namespace quillow::pdf {

/// Whether it is a spacing accent, such as U+00A8.
[[nodiscard]] bool isAccent(char32_t character);

/// The letter with the accent, or 0 if Unicode has no such letter.
[[nodiscard]] char32_t composed(char32_t letter, char32_t accent);

/// Whether it is a sign that TeX draws over the one behind it: the slash of a negation, the bar of an arrow.
[[nodiscard]] bool isOverlay(char32_t character);

/// The sign with the overlay, or 0 if Unicode has no such sign.
[[nodiscard]] char32_t overlaid(char32_t overlay, char32_t sign);

} // namespace quillow::pdf
