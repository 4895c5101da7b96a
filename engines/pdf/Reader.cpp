#include "engines/pdf/Reader.h"

#include "engines/pdf/OutcomeRows.h"
#include "engines/pdf/PageJoiner.h"
#include "engines/pdf/content/PageReader.h"
#include "engines/pdf/layout/PageLayout.h"
#include "text/TextSink.h"

#include <string>
#include <string_view>

namespace quillow::pdf {

namespace {

/// Reads pages of a document one after another.
class PageTexts {
public:
    PageTexts(Document& document, Reflow reflow)
        : reflow_(reflow)
        , fonts_(document)
        , reader_(document, fonts_) {}

    [[nodiscard]] PageOutcome read(const PageNode& node) {
        PageOutcome outcome;
        outcome.loss.partsSkipped = reader_.read(node, page_).partsSkipped;
        outcome.loss.charactersDecoded = page_.text.size();
        outcome.loss.charactersWithoutUnicode = page_.charactersWithoutUnicode;
        layOut(page_, layout_);
        if (reflow_ == Reflow::joinLines)
            describeRows(layout_, outcome);
        else
            outcome.text = utf8Of(layout_.text);
        return outcome;
    }

private:
    static std::string utf8Of(std::u32string_view characters) {
        text::TextSink sink;
        sink.reserve(characters.size());
        for (const char32_t c : characters)
            sink.append(c);
        return std::string(sink.view());
    }

    Reflow reflow_;
    FontCache fonts_;
    PageReader reader_;
    Page page_;
    PageLayout layout_;
};

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
