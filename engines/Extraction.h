// The outcome of one document and the options of its text. The engines and everyone who calls them share these values.
#pragma once

#include "engines/PageSelection.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quillow {

/// The reason for a document's result. A closed list: results, logs and exit codes use no others.
enum class Reason {
    ok,          ///< the document has text
    okEmpty,     ///< the document was read and holds no characters
    noTextLayer, ///< a PDF with pictures only
    partial,     ///< there is text, but some pages or parts failed
    wrongType,   ///< the content is not what the extension says
    damaged,     ///< beyond repair, or empty if the format does not allow that
    locked,      ///< needs a password
    tooLarge,
    timeout,
    outOfMemory,
    crashed,
    unreadable,
    unwritable,
    skipped,
};

/// The reason's name as results and messages print it: "ok", "ok-empty", "no-text-layer", ...
[[nodiscard]] std::string_view reasonName(Reason reason);
/// The reason with that name; std::nullopt if there is none.
[[nodiscard]] std::optional<Reason> reasonNamed(std::string_view name);

enum class PageMarks { off, formFeed };
enum class CellSeparator { tab, line };
enum class ListMarkers { on, off };
enum class LinkTargets { off, afterText };
enum class HiddenText { off, on };
enum class HeadersFooters { off, on };
enum class Reflow { off, joinLines };

/// Runs the work on the calling thread and at the same time on up to `threads` - 1 others. Returns when all have ended.
/// The work does not throw.
using RunTogether = std::function<void(unsigned threads, const std::function<void()>& work)>;

/// How to read the document and write the text; the same for every engine. The desktop program uses the defaults.
struct Options {
    PageMarks pageMarks = PageMarks::off;
    CellSeparator cells = CellSeparator::tab;
    ListMarkers listMarkers = ListMarkers::on;
    LinkTargets links = LinkTargets::off;
    HiddenText hiddenText = HiddenText::off;
    HeadersFooters headersFooters = HeadersFooters::off;
    Reflow reflow = Reflow::off;
    /// The largest number of threads that read one document. Only pages of PDFs are read by several, and the text is
    /// the same whatever their number.
    unsigned threads = 1;
    RunTogether runTogether; ///< where those threads come from; if empty, they are started for the document
    PageSelection pages;     ///< of a PDF; RTF and HTML have no pages that could be told apart
    std::string password;    ///< in UTF-8, for PDFs that the empty password does not open
};

/// What was lost on the way from the document to its text.
struct LossAccount {
    std::uint64_t charactersDecoded = 0;
    std::uint64_t charactersWithoutUnicode = 0; ///< written as U+FFFD
    std::uint64_t pagesWithoutText = 0;
    std::uint64_t partsSkipped = 0; ///< pages, streams or groups that could not be read
};

/// The outcome of one document.
struct Extraction {
    Reason reason = Reason::damaged;
    /// The text in UTF-8: always valid, LF line ends, no byte-order mark, no control characters but TAB, LF (and FF
    /// with page marks); when not empty it ends with exactly one LF. Present for ok, okEmpty (empty) and partial
    /// only.
    std::optional<std::string> text;
    std::string detail; ///< a short phrase for the user, such as "the content is a PDF"; may be empty
    LossAccount loss;
    std::uint64_t pages = 0; ///< pages of a PDF; 0 where the format has none
};

/// An outcome without a text.
[[nodiscard]] inline Extraction failed(Reason reason, std::string detail) {
    Extraction extraction;
    extraction.reason = reason;
    extraction.detail = std::move(detail);
    return extraction;
}

/// An engine calls it at most once, if it no longer needs the document's bytes before it has finished the text. Their
/// owner may then free them. Never throws.
using BytesDone = std::function<void()>;

} // namespace quillow
