#include "engines/pdf/layout/Letter.h"

#include "engines/pdf/layout/PresentationForms.h"

#include <string_view>

namespace quillow::pdf {

void appendLetter(const Page& page, const Letter& letter, std::u32string& out) {
    for (std::uint32_t i = letter.textBegin; i < letter.textEnd; ++i) {
        const char32_t c = page.text[i];
        if (c == kSoftHyphen) {
            if (letter.right > letter.left) out.push_back(U'-'); // what is drawn is a hyphen
            continue;
        }
        if (c < kFirstPresentationForm) {
            out.push_back(c);
            continue;
        }
        const std::u16string_view plain = plainLetters(c);
        if (plain.empty()) out.push_back(c);
        for (const char16_t unit : plain)
            out.push_back(unit);
    }
}

} // namespace quillow::pdf
