#include "engines/pdf/Reader.h"

#include "engines/pdf/PageJoiner.h"
#include "engines/pdf/PageTexts.h"

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
    PageTexts texts(document, options.reflow);
    const std::uint64_t pages = list.pages.size() + list.missing;
    std::uint32_t number = 0;
    bool hasPage = list.pages.empty(); // a document without pages is damaged, whichever are selected
    for (const PageNode& page : list.pages) {
        if (!options.pages.contains(++number)) continue;
        hasPage = true;
        if (!joiner.add(texts.read(page))) break;
    }
    if (!hasPage) return failed(Reason::unreadable, "the document has no such page: it has " + std::to_string(number));
    if (list.isCut) joiner.leaveOut(1, "more than " + std::to_string(kMaximumPages) + " pages");
    joiner.leaveOut(list.missing, missingPages(list));
    return std::move(joiner).finish(pages);
}

} // namespace quillow::pdf
