#include "engines/pdf/Reader.h"

#include "engines/pdf/PageJoiner.h"
#include "engines/pdf/PageTexts.h"
#include "engines/pdf/PageThreads.h"

#include <memory>
#include <string>
#include <string_view>

namespace quillow::pdf {

namespace {

Failure withPassword(const Failure& failure, const Options& options) {
    if (failure.reason != Reason::locked) return failure;
    return {Reason::locked, options.password.empty() ? "a password is needed" : "the password is wrong"};
}

std::string missingPages(const PageList& list) {
    return std::to_string(list.missing) + " of " + std::to_string(list.pages.size() + list.missing) +
           " pages cannot be read";
}

/// Those of the pages that can be found and that the selection has.
std::vector<PageNode> selectedPages(const PageList& list, const PageSelection& selection) {
    std::vector<PageNode> selected;
    std::uint32_t number = 0;
    for (const PageNode& page : list.pages)
        if (selection.contains(++number)) selected.push_back(page);
    return selected;
}

/// Reads pages of a copy of a document.
class CopiedPages final : public PageSource {
public:
    CopiedPages(const Document& document, std::span<const PageNode> pages, const Options& options)
        : document_(document.forThread())
        , texts_(*document_, options)
        , pages_(pages) {}

    [[nodiscard]] PageOutcome read(std::size_t page) override { return texts_.read(pages_[page]); }
    [[nodiscard]] double usedShare() const override { return texts_.usedShare(); }

private:
    std::unique_ptr<Document> document_;
    PageTexts texts_;
    std::span<const PageNode> pages_;
};

/// False if the pages must be read by one thread; what the joiner has is of no use then. The document itself is left as
/// it is.
bool readByThreads(const Document& document, std::span<const PageNode> pages, const Options& options, unsigned threads,
                   PageJoiner& joiner) {
    PageThreads reading(
        pages.size(), [&] { return std::make_unique<CopiedPages>(document, pages, options); },
        [&joiner](const PageOutcome& page) { return joiner.add(page); });
    return reading.read(threads, document.usedShare(), options.runTogether);
}

} // namespace

Extraction readPdf(std::span<const std::byte> bytes, const Options& options, const BytesDone& /*bytesDone*/) {
    const std::string_view view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const Result<std::unique_ptr<Document>> opened = Document::open(view, options.password);
    if (!opened) {
        const Failure failure = withPassword(opened.failure(), options);
        return failed(failure.reason, failure.detail);
    }
    Document& document = *opened.value();
    const PageList list = pageListOf(document);
    PageJoiner joiner(options.pageMarks, options.reflow);
    const std::uint64_t pages = list.pages.size() + list.missing;
    const std::vector<PageNode> selected = selectedPages(list, options.pages);
    // A document without pages is damaged, whichever are selected.
    if (selected.empty() && !list.pages.empty())
        return failed(Reason::unreadable, "the document has no such page: it has " + std::to_string(list.pages.size()));
    if (const unsigned threads = threadsFor(selected.size(), options.threads);
        threads < 2 || !readByThreads(document, selected, options, threads, joiner)) {
        joiner = PageJoiner(options.pageMarks, options.reflow);
        PageTexts texts(document, options);
        for (const PageNode& page : selected)
            if (!joiner.add(texts.read(page))) break;
    }
    if (list.isCut) joiner.leaveOut(1, "more than " + std::to_string(kMaximumPages) + " pages");
    joiner.leaveOut(list.missing, missingPages(list));
    return std::move(joiner).finish(pages);
}

} // namespace quillow::pdf
