#include "text/CodePage.h"

#include "text/CodePageTables.h"
#include "text/Utf8.h"

#include <algorithm>

namespace quillow::text {

const CodePage* CodePage::forNumber(int number) {
    const CodePage* end = kCodePages + kCodePageCount;
    const CodePage* found = std::lower_bound(kCodePages, end, number,
                                             [](const CodePage& page, int wanted) { return page.number() < wanted; });
    return found != end && found->number() == number ? found : nullptr;
}

char32_t CodePage::decodePair(std::uint8_t lead, std::uint8_t trail) const {
    if (!isLeadByte(lead)) return kReplacementCharacter;
    const char32_t codePoint = pairs_->decode(lead, trail);
    return codePoint != 0 ? codePoint : kReplacementCharacter;
}

} // namespace quillow::text
