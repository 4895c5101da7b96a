// The one door to the engines: bytes and a kind go in, a text or a reason comes out.
#pragma once

#include "engines/DocumentKind.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillow {

/// Why a document gave what it gave. A closed list: results, logs and exit codes use these and no others.
enum class Reason {
    ok,          ///< text came
    okEmpty,     ///< the document was read and holds no characters
    noTextLayer, ///< a PDF of pictures only
    partial,     ///< text came, but pages or parts failed
    wrongType,   ///< the content is not what the extension says
    damaged,     ///< beyond repair, or no bytes at all where the format needs some
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

enum class PageMarks { off, formFeed };
enum class CellSeparator { tab, line };
enum class ListMarkers { on, off };
enum class LinkTargets { off, afterText };
enum class HiddenText { off, on };
enum class HeadersFooters { off, on };
enum class Reflow { off, joinLines };

/// How the text form is to be written; the same for every engine. The defaults are what the desktop program uses.
struct Options {
    PageMarks pageMarks = PageMarks::off;
    CellSeparator cells = CellSeparator::tab;
    ListMarkers listMarkers = ListMarkers::on;
    LinkTargets links = LinkTargets::off;
    HiddenText hiddenText = HiddenText::off;
    HeadersFooters headersFooters = HeadersFooters::off;
    Reflow reflow = Reflow::off;
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
    /// The text in UTF-8: always valid, LF line ends, no byte-order mark, no control characters but TAB, LF (and FF with
    /// page marks); when not empty it ends with exactly one LF. Present for ok, okEmpty (empty) and partial only.
    std::optional<std::string> text;
    std::string detail; ///< one plain English sentence part for a person, "the content is a PDF"; may be empty
    LossAccount loss;
    std::uint64_t pages = 0; ///< pages of a PDF; 0 where the format has none
};

/// Called at most once, when a document's bytes are looked at no more though its text is still to come: who owns them may free
/// them. Never throws.
using BytesDone = std::function<void()>;

/// Reads one document that is wholly in memory. Never throws, opens no socket and no file but, for the first PDF, the module
/// that reads them; keeps nothing else between calls and may be called from several threads at once. For DocumentKind::rtfd the
/// bytes are those of the RTF file in the bundle.
[[nodiscard]] Extraction extract(std::span<const std::byte> bytes, DocumentKind kind, const Options& options = {},
                                 const BytesDone& bytesDone = {});

/// The kind that the content itself shows, by its first bytes (for standard input without a name, and to say what a
/// mislabelled file is). Nothing when the bytes look like none of them; never answers rtfd.
[[nodiscard]] std::optional<DocumentKind> sniffDocumentKind(std::span<const std::byte> bytes);

/// "a PNG image", "a ZIP archive or an office document", "a MIME web archive", ...: what common file that no engine reads the
/// bytes are, if they are one. Nothing beyond the first 8 KiB is looked at.
[[nodiscard]] std::optional<std::string_view> describeForeignContent(std::span<const std::byte> bytes);

} // namespace quillow
