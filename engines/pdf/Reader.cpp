// Joins the text of a PDF's pages. Decides the order in which a page is read, and the letters that its characters
// become.
#include "engines/pdf/Reader.h"

#include "engines/pdf/Limits.h"
#include "engines/pdf/crypt/PasswordBytes.h"
#include "engines/pdf/layout/PresentationForms.h"
#include "text/TextSink.h"
#include "text/Unicode.h"
#include "text/Utf8.h"

#include <new>
#include <utility>

namespace quillow::pdf {

namespace {

using text::TextSink;

/// The strongly right-to-left blocks (UAX #9, classes R and AL): Hebrew to Arabic Extended-A, their presentation
/// forms, and the historic scripts of the supplementary plane, by their high surrogates.
constexpr bool isRightToLeft(char16_t unit) {
    return (unit >= 0x0590 && unit <= 0x08FF) || (unit >= 0xFB1D && unit <= 0xFDFF) ||
           (unit >= 0xFE70 && unit <= 0xFEFE) || unit == 0xD802 || unit == 0xD803 || unit == 0xD83A || unit == 0xD83B;
}

constexpr bool isBlank(char16_t unit) {
    return unit <= 0x20 || unit == 0xA0;
}

/// Directional marks that the library adds around runs. The text is in logical order and needs none (UAX #9, 2.1, 2.2).
constexpr bool isEmbeddingMark(char32_t codePoint) {
    return codePoint >= 0x202A && codePoint <= 0x202E;
}

struct Letters {
    std::size_t all = 0;
    std::size_t rightToLeft = 0;
};

Letters countLetters(const std::u16string& page) {
    Letters letters;
    for (const char16_t unit : page) {
        if (isBlank(unit) || isEmbeddingMark(unit)) continue;
        ++letters.all;
        if (isRightToLeft(unit)) ++letters.rightToLeft;
    }
    return letters;
}

void appendCharacter(TextSink& sink, char32_t codePoint, LossAccount& loss) {
    if (isEmbeddingMark(codePoint)) return;
    ++loss.charactersDecoded;
    if (codePoint == text::kReplacementCharacter) ++loss.charactersWithoutUnicode;
    const std::u16string_view plain = plainLetters(codePoint);
    if (plain.empty()) {
        sink.append(codePoint);
        return;
    }
    for (const char16_t unit : plain)
        sink.append(unit);
}

/// Removes the next code point from UTF-16 and returns it. Lone surrogates and private-use characters are U+FFFD.
char32_t nextCodePoint(std::u16string_view& rest) {
    const char16_t first = rest.front();
    rest.remove_prefix(1);
    char32_t codePoint = first;
    if (text::isHighSurrogate(first) && !rest.empty() && text::isLowSurrogate(rest.front())) {
        codePoint = text::combineSurrogates(first, rest.front());
        rest.remove_prefix(1);
    }
    const bool isCharacter = !text::isSurrogate(codePoint) && !text::isPrivateUse(codePoint);
    return isCharacter ? codePoint : text::kReplacementCharacter;
}

/// Removes the blanks and line ends at the end of a page, which begins at `from`.
void trimEnd(TextSink& sink, std::size_t from) {
    std::size_t end = sink.size();
    while (end > from && (sink.view()[end - 1] == '\n' || sink.view()[end - 1] == ' '))
        --end;
    sink.truncate(end);
}

/// Appends a page. Returns whether it has any text.
bool appendPage(TextSink& sink, std::u16string_view page, LossAccount& loss) {
    const std::size_t begin = sink.size();
    while (!page.empty()) {
        const char32_t codePoint = nextCodePoint(page);
        if (codePoint == '\n' || codePoint == '\f')
            sink.appendAscii('\n'); // the library ends a page's text with a form feed
        else if (codePoint == ' ' || codePoint == '\t')
            sink.appendAscii(static_cast<char>(codePoint));
        else
            appendCharacter(sink, codePoint, loss);
    }
    trimEnd(sink, begin);
    return sink.size() > begin;
}

Extraction failedWithPages(Reason reason, std::string detail, std::uint64_t pages) {
    Extraction extraction = failed(reason, std::move(detail));
    extraction.pages = pages;
    return extraction;
}

/// A share in whole numbers: `part` of `whole`.
struct Share {
    std::size_t part;
    std::size_t whole;
};

/// The text of a page in the better of two orders. Content-stream order is better than geometry except on
/// right-to-left pages, where the stream draws the last word first. A share of right-to-left letters over
/// kMostQuoted is more than a quotation. Geometry drops letters that overlap; if less than kLeastKept are left, all
/// letters out of order are better than a part in order.
std::optional<std::u16string> bestText(const PageSource& pages, std::size_t index) {
    constexpr Share kMostQuoted{1, 5};
    constexpr Share kLeastKept{9, 10};
    std::optional<std::u16string> drawn = pages.pageText(index, PageOrder::contentStream);
    if (!drawn) return drawn;
    const Letters letters = countLetters(*drawn);
    if (letters.rightToLeft * kMostQuoted.whole <= letters.all * kMostQuoted.part) return drawn;
    std::optional<std::u16string> read = pages.pageText(index, PageOrder::reading);
    return read && countLetters(*read).all * kLeastKept.whole >= letters.all * kLeastKept.part ? read : drawn;
}

class Pages {
public:
    Pages(const PageSource& source, const Options& options)
        : source_(source)
        , sink_(options.pageMarks == PageMarks::formFeed ? TextSink::FormFeeds::keep : TextSink::FormFeeds::drop)
        , marks_(options.pageMarks) {}

    Extraction read() && {
        for (std::size_t index = 0; index < source_.count() && !stopped_; ++index)
            readPage(index);
        return std::move(*this).outcome();
    }

private:
    void readPage(std::size_t index) {
        if (index >= kMaximumPages) return stop("more than " + std::to_string(kMaximumPages) + " pages");
        if (sink_.size() > kMaximumText) return stop("the text is too long");
        const std::optional<std::u16string> page = bestText(source_, index);
        if (source_.hasMemoryEnded()) throw std::bad_alloc();
        if (!page) {
            ++loss_.partsSkipped;
            if (++missingInARow_ > kMaximumMissingPages) stop("too many pages are missing");
            return;
        }
        missingInARow_ = 0;
        // With page marks, every page has its mark. Without them, empty pages leave no blank lines.
        const std::size_t before = sink_.size();
        if (marks_ == PageMarks::formFeed ? pagesRead_ > 0 : before > 0) sink_.appendAscii(separator());
        ++pagesRead_;
        if (appendPage(sink_, *page, loss_)) {
            ++pagesWithText_;
            return;
        }
        ++loss_.pagesWithoutText;
        if (marks_ == PageMarks::off) sink_.truncate(before);
    }

    [[nodiscard]] char separator() const { return marks_ == PageMarks::formFeed ? '\f' : '\n'; }

    void stop(std::string why) {
        stopped_ = true;
        why_ = std::move(why);
        loss_.partsSkipped += 1;
    }

    Extraction outcome() && {
        const auto pageCount = static_cast<std::uint64_t>(source_.count());
        if (pagesRead_ == 0) return failedWithPages(Reason::damaged, "no page can be read", pageCount);
        if (pagesWithText_ == 0) {
            Extraction extraction = failedWithPages(Reason::noTextLayer, "the pages hold no characters", pageCount);
            extraction.loss = loss_;
            return extraction;
        }
        Extraction extraction;
        extraction.reason = loss_.partsSkipped > 0 ? Reason::partial : Reason::ok;
        if (stopped_)
            extraction.detail = why_;
        else if (loss_.partsSkipped > 0)
            extraction.detail =
                std::to_string(loss_.partsSkipped) + " of " + std::to_string(pageCount) + " pages cannot be read";
        extraction.text = std::move(sink_).finish();
        extraction.loss = loss_;
        extraction.pages = pageCount;
        return extraction;
    }

    const PageSource& source_;
    TextSink sink_;
    PageMarks marks_;
    LossAccount loss_;
    std::uint64_t pagesRead_ = 0;
    std::uint64_t pagesWithText_ = 0;
    std::uint64_t missingInARow_ = 0;
    bool stopped_ = false;
    std::string why_;
};

/// The document, opened with the password. Old revisions of encryption take its bytes in PDFDocEncoding, others in
/// UTF-8 (ISO 32000-2, 7.6.4.3); the library tells nothing about the revision.
std::unique_ptr<PageSource> openWith(const Module& module, std::span<const std::byte> bytes,
                                     const std::string& password) {
    std::unique_ptr<PageSource> pages = module.open(bytes, password);
    if (!pages || pages->opening() != PageSource::Opening::locked) return pages;
    const std::optional<std::string> inOldEncoding = pdfDocBytes(password);
    if (!inOldEncoding || *inOldEncoding == password) return pages;
    pages.reset();
    return module.open(bytes, *inOldEncoding);
}

} // namespace

Extraction readPages(const PageSource& pages, const Options& options) {
    if (pages.hasMemoryEnded()) throw std::bad_alloc();
    switch (pages.opening()) {
    case PageSource::Opening::locked:
        return failed(Reason::locked, options.password.empty() ? "a password is needed" : "the password is wrong");
    case PageSource::Opening::damaged: return failed(Reason::damaged, "the PDF cannot be read");
    case PageSource::Opening::opened: break;
    }
    return Pages(pages, options).read();
}

Extraction readWith(const Module& module, std::span<const std::byte> bytes, const Options& options) {
    if (bytes.size() > kMaximumDocument) return failed(Reason::tooLarge, "the file is too large");
    const std::unique_ptr<PageSource> pages = openWith(module, bytes, options.password);
    if (!pages) return failed(Reason::unreadable, "what reads PDFs is not installed: " + module.failure());
    return readPages(*pages, options);
}

Extraction readPdf(std::span<const std::byte> bytes, const Options& options, const BytesDone& /*bytesDone*/) {
    return readWith(Module::installed(), bytes, options); // reads the bytes to the end
}

} // namespace quillow::pdf
