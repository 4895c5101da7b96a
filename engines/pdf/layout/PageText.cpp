#include "engines/pdf/layout/PageText.h"

#include "engines/pdf/layout/PageLayout.h"

namespace quillow::pdf {

void appendPageText(const Page& page, std::u32string& out) {
    PageLayout layout;
    layOut(page, layout);
    out.append(layout.text);
}

} // namespace quillow::pdf
