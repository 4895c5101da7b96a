// What the content of small pages shows, as text. The font /F of their resources is Courier: each of its glyphs is 0.6
// wide. Page sizes and rules are left out where a test does not ask for them.
#pragma once

#include "engines/pdf/content/PageDump.h"
#include "engines/pdf/content/PageReader.h"
#include "tests/engines/pdf/PdfBuilder.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillow::pdf::test {

inline constexpr std::string_view kCourier = "<</Type/Font/Subtype/Type1/BaseFont/Courier>>";

/// The first page of a file. The file must open.
struct ReadPage {
    Page page;
    PageLoss loss;
};
[[nodiscard]] ReadPage readPage(std::string_view file, const ContentLimits& limits = {});

/// Resources with the font /F and further entries.
[[nodiscard]] std::string resourcesWith(std::string_view entries);

/// The dump of a page of 612 by 792 without its first line. `resources` are entries beside the font; `objects` are the
/// document's objects from number 5 on.
[[nodiscard]] std::string dumpOfContent(std::string_view content, std::string_view resources = "",
                                        const std::vector<std::string>& objects = {},
                                        DumpDetail detail = DumpDetail::runs);

/// The same for a page whose dictionary has more entries, of a catalog that has more entries.
[[nodiscard]] std::string dumpOfPage(std::string_view content, std::string_view pageEntries,
                                     const std::vector<std::string>& objects, std::string_view catalogEntries = "");

/// A stream's body for `objects`.
[[nodiscard]] std::string streamOf(std::string_view entries, std::string_view data);

/// A case of a table: what the content shows. The content is set in the font /F of size 10 from (100, 700) on.
struct ContentCase {
    const char* name;
    const char* content;
    const char* dump;
};
void expectDumps(const std::vector<ContentCase>& cases);

} // namespace quillow::pdf::test
