#include "engines/pdf/explain/PageExplanation.h"

#include "engines/pdf/content/PageReader.h"
#include "engines/pdf/explain/PagePicture.h"
#include "engines/pdf/layout/HiddenText.h"
#include "engines/pdf/layout/PageLayout.h"
#include "engines/pdf/structure/RunningArtifacts.h"
#include "engines/pdf/structure/TableCells.h"

#include <string>
#include <string_view>

namespace quillow::pdf {

namespace {

std::string titleOf(const Page& page, std::size_t number, std::size_t count) {
    return "Page " + std::to_string(number) + " of " + std::to_string(count) + ", " +
           SvgWriter::number(page.cropBox.width()) + " x " + SvgWriter::number(page.cropBox.height()) + " points, " +
           std::to_string(page.runs.size()) + " runs, " + std::to_string(page.glyphs.size()) + " glyphs";
}

} // namespace

Extraction explainPage(std::span<const std::byte> bytes, std::size_t number, const Options& options) {
    const std::string_view view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const Result<std::unique_ptr<Document>> opened = Document::open(view, options.password);
    if (!opened) {
        const Failure& failure = opened.failure();
        if (failure.reason != Reason::locked) return failed(failure.reason, failure.detail);
        return failed(Reason::locked, options.password.empty() ? "a password is needed" : "the password is wrong");
    }
    Document& document = *opened.value();
    const std::vector<PageNode> pages = pagesOf(document);
    if (pages.empty()) return failed(Reason::damaged, "no page can be read");
    if (number == 0 || number > pages.size())
        return failed(Reason::unreadable, "there is no page " + std::to_string(number) + ": the document has " +
                                              std::to_string(pages.size()) + (pages.size() == 1 ? " page" : " pages"));
    FontCache fonts(document);
    PageReader reader(document, fonts);
    Page page;
    Extraction extraction;
    extraction.pages = pages.size();
    extraction.loss.partsSkipped = reader.read(pages[number - 1], page).partsSkipped;
    extraction.loss.charactersDecoded = page.text.size();
    extraction.loss.charactersWithoutUnicode = page.charactersWithoutUnicode;
    if (options.headersFooters == HeadersFooters::off && isTagged(document)) dropRunningArtifacts(page);
    TableCells(document).find(pages[number - 1], page);
    Evidence evidence;
    static_cast<void>(repeatedHiddenRuns(page, &evidence)); // layout asks the same, but has no use for the reasons
    PageLayout layout;
    layOut(page, layout, &evidence);
    extraction.reason = extraction.loss.partsSkipped > 0 ? Reason::partial : Reason::ok;
    if (extraction.loss.partsSkipped > 0) extraction.detail = "some parts of the page are damaged";
    extraction.text = pictureOf(page, layout, evidence, titleOf(page, number, pages.size()));
    return extraction;
}

} // namespace quillow::pdf
