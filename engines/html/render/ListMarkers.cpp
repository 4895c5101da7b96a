#include "engines/html/render/ListMarkers.h"

#include <algorithm>

namespace quillow::html {

namespace {

constexpr std::int64_t kMaxRoman = 3999;

std::string alphabetic(std::int64_t number, char first) {
    std::string letters;
    for (; number > 0; number = (number - 1) / 26)
        letters.push_back(static_cast<char>(first + (number - 1) % 26));
    std::reverse(letters.begin(), letters.end());
    return letters;
}

std::string roman(std::int64_t number) {
    struct Numeral {
        std::int64_t value;
        const char* letters;
    };
    constexpr Numeral kNumerals[] = {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"},
                                     {90, "xc"},  {50, "l"},   {40, "xl"}, {10, "x"},   {9, "ix"},
                                     {5, "v"},    {4, "iv"},   {1, "i"}};
    std::string letters;
    for (const Numeral& numeral : kNumerals)
        for (; number >= numeral.value; number -= numeral.value)
            letters += numeral.letters;
    return letters;
}

std::string upperCase(std::string letters) {
    for (char& c : letters)
        c = static_cast<char>(c - 'a' + 'A');
    return letters;
}

std::string numberText(ListStyle style, std::int64_t number) {
    const bool isAlphabetic = number > 0;
    const bool isRoman = number > 0 && number <= kMaxRoman;
    if (style == ListStyle::lowerAlpha && isAlphabetic) return alphabetic(number, 'a');
    if (style == ListStyle::upperAlpha && isAlphabetic) return alphabetic(number, 'A');
    if (style == ListStyle::lowerRoman && isRoman) return roman(number);
    if (style == ListStyle::upperRoman && isRoman) return upperCase(roman(number));
    return std::to_string(number);
}

} // namespace

std::string listMarker(ListStyle style, std::int64_t number) {
    if (style == ListStyle::none) return {};
    if (style == ListStyle::bullet) return "\u2022 ";
    return numberText(style, number) + ". ";
}

} // namespace quillow::html
