#include "engines/pdf/layout/PresentationForms.h"

#include <algorithm>

namespace quillow::pdf {

std::u16string_view plainLetters(char32_t codePoint) {
    if (codePoint < 0xFB00 || codePoint > 0xFEFE) return {};
    const PresentationForm* const end = kPresentationForms + kPresentationFormCount;
    const PresentationForm* const found =
        std::lower_bound(kPresentationForms, end, codePoint,
                         [](const PresentationForm& form, char32_t code) { return form.code < code; });
    if (found == end || found->code != codePoint) return {};
    return {kPresentationFormPool + found->begin, found->length};
}

} // namespace quillow::pdf
