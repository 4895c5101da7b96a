#include "engines/pdf/DocumentText.h"

#include "engines/pdf/Limits.h"
#include "engines/pdf/content/PageReader.h"
#include "engines/pdf/layout/PageText.h"
#include "text/TextSink.h"
#include "text/Utf8.h"

#include <string_view>
#include <utility>

namespace quillow::pdf {

namespace {

using text::TextSink;

Extraction failedWithPages(Reason reason, std::string detail, std::uint64_t pages) {
    Extraction extraction = failed(reason, std::move(detail));
    extraction.pages = pages;
    return extraction;
}

class DocumentText {
public:
    DocumentText(Document& document, const Options& options)
        : document_(document)
        , fonts_(document)
        , reader_(document, fonts_)
        , sink_(options.pageMarks == PageMarks::formFeed ? TextSink::FormFeeds::keep : TextSink::FormFeeds::drop)
        , marks_(options.pageMarks) {}

    Extraction read() && {
        const std::vector<PageNode> pages = pagesOf(document_);
        pageCount_ = pages.size();
        for (const PageNode& page : pages) {
            if (sink_.size() > kMaximumText) {
                ++loss_.partsSkipped;
                why_ = "the text is too long";
                break;
            }
            readPage(page);
        }
        return std::move(*this).outcome();
    }

private:
    void readPage(const PageNode& node) {
        loss_.partsSkipped += reader_.read(node, page_).partsSkipped;
        text_.clear();
        appendPageText(page_, text_);
        // With page marks, every page has its mark. Without them, empty pages leave no blank lines.
        if (marks_ == PageMarks::formFeed && pagesRead_ > 0) sink_.appendAscii('\f');
        ++pagesRead_;
        loss_.charactersDecoded += page_.text.size();
        loss_.charactersWithoutUnicode += page_.charactersWithoutUnicode;
        if (text_.empty()) {
            ++loss_.pagesWithoutText;
            return;
        }
        ++pagesWithText_;
        if (marks_ == PageMarks::formFeed) text_.pop_back(); // the mark ends the line
        for (const char32_t c : text_) {
            if (c == U'\n' || c == U'\t')
                sink_.appendAscii(static_cast<char>(c));
            else
                sink_.append(c);
        }
    }

    Extraction outcome() && {
        if (pageCount_ == 0) return failed(Reason::damaged, "no page can be read");
        if (pagesWithText_ == 0) {
            Extraction extraction = failedWithPages(Reason::noTextLayer, "the pages hold no characters", pageCount_);
            extraction.loss = loss_;
            return extraction;
        }
        Extraction extraction;
        extraction.reason = loss_.partsSkipped > 0 ? Reason::partial : Reason::ok;
        extraction.detail = why_;
        if (loss_.partsSkipped > 0 && why_.empty())
            extraction.detail = std::to_string(loss_.partsSkipped) + " damaged parts were left out";
        extraction.text = std::move(sink_).finish();
        extraction.loss = loss_;
        extraction.pages = pageCount_;
        return extraction;
    }

    Document& document_;
    FontCache fonts_;
    PageReader reader_;
    TextSink sink_;
    PageMarks marks_;
    Page page_;
    std::u32string text_;
    LossAccount loss_;
    std::string why_;
    std::uint64_t pageCount_ = 0;
    std::uint64_t pagesRead_ = 0;
    std::uint64_t pagesWithText_ = 0;
};

} // namespace

Extraction readDocument(std::span<const std::byte> bytes, const Options& options) {
    const std::string_view view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    Result<std::unique_ptr<Document>> document = Document::open(view);
    if (!document) return failed(document.failure().reason, document.failure().detail);
    return DocumentText(*document.value(), options).read();
}

} // namespace quillow::pdf
