// Any bytes as the content of a page with fixed resources: its runs and glyphs are whole, and reading it again gives
// the same. The document has fonts /F (simple), /C (two-byte) and /V (vertical), the forms /X and /Y, which call each
// other, the graphics state /G with a font, and the properties /M (marks) and /O (optional content that is off).
#include "engines/pdf/content/ContentBuffer.h"
#include "engines/pdf/content/Interpreter.h"
#include "fuzz/PdfPageCheck.h"

#include <cstdint>
#include <string>

namespace {

using namespace quillow::pdf;

/// Has no cross-references: the document finds its objects by a scan.
constexpr std::string_view kFile =
    "%PDF-1.7\n"
    "1 0 obj<</Type/Catalog/Pages 2 0 R/OCProperties<</D<</OFF[12 0 R]>>>>>>endobj\n"
    "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
    "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Resources 4 0 R>>endobj\n"
    "4 0 obj<</Font<</F 5 0 R/C 6 0 R/V 7 0 R>>/XObject<</X 8 0 R/Y 9 0 R>>/ExtGState<</G<</Font[5 0 R 7]>>>>"
    "/Properties<</M<</MCID 9/ActualText(xyz)>>/O 12 0 R>>>>endobj\n"
    "5 0 obj<</Type/Font/Subtype/Type1/BaseFont/Courier>>endobj\n"
    "6 0 obj<</Type/Font/Subtype/Type0/BaseFont/A/Encoding/UniJIS-UTF16-H/DescendantFonts[10 0 R]>>endobj\n"
    "7 0 obj<</Type/Font/Subtype/Type0/BaseFont/A/Encoding/UniJIS-UTF16-V/DescendantFonts[10 0 R]>>endobj\n"
    "8 0 obj<</Subtype/Form/BBox[0 0 400 400]/Length 30>>stream\n/F 9 Tf 1 0 0 1 9 9 Tm(x)Tj/Y Do\nendstream endobj\n"
    "9 0 obj<</Subtype/Form/Matrix[0 1 -1 0 300 0]/Length 24>>stream\n(y)Tj Q EMC/X Do q 5 Ts\nendstream endobj\n"
    "10 0 obj<</Type/Font/Subtype/CIDFontType0/BaseFont/A/CIDSystemInfo<</Registry(Adobe)/Ordering(Japan1)"
    "/Supplement 6>>>>endobj\n"
    "12 0 obj<</Type/OCG/Name(off)>>endobj\n"
    "trailer<</Root 1 0 R>>\n";

/// Small, so that nested calls end soon.
constexpr ContentLimits kLimits{100'000, static_cast<std::size_t>(-1)};

struct Reader {
    std::unique_ptr<Document> document = std::move(Document::open(kFile).value());
    FontCache fonts{*document};
    Interpreter interpreter{*document, fonts, kLimits};
    PageNode node = pagesOf(*document).at(0);
};

std::string dumpOf(Reader& reader, std::string_view content) {
    Page page;
    page.cropBox = {0, 0, 612, 792};
    ContentBuffer buffer;
    buffer.adopt(content);
    reader.interpreter.beginPage(page, {}, reader.node.resources);
    reader.interpreter.interpret(buffer.guarded());
    reader.interpreter.endPage();
    checkPage(page);
    return quillow::pdf::dumpOf(page, DumpDetail::glyphs);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Reader reader;
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    require(dumpOf(reader, content) == dumpOf(reader, content));
    return 0;
}
