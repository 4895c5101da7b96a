#include "engines/pdf/layout/Letter.h"

#include "engines/pdf/layout/PresentationForms.h"

#include <string_view>

namespace quillow::pdf {

void appendPlainLetters(char32_t character, std::u32string& out) {
    const std::u16string_view plain =
        character < kFirstPresentationForm ? std::u16string_view() : plainLetters(character);
    if (plain.empty()) out.push_back(character);
    for (const char16_t unit : plain)
        out.push_back(unit);
}

void appendLetter(const Page& page, const Letter& letter, std::u32string& out) {
    for (std::uint32_t i = letter.textBegin; i < letter.textEnd; ++i) {
        const char32_t c = page.text[i];
        if (c == kSoftHyphen) {
            if (letter.right > letter.left) out.push_back(U'-'); // what is drawn is a hyphen
            continue;
        }
        appendPlainLetters(c, out);
    }
}

} // namespace quillow::pdf
