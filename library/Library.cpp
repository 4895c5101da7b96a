// The functions of libquillowtext over the door to the engines. No exception leaves them.
#include "engines/ContentSniffer.h"
#include "engines/Extract.h"
#include "library/quillowtext.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>

namespace quillow {

namespace {

static_assert(QUILLOW_OK == int(Reason::ok) && QUILLOW_OK_EMPTY == int(Reason::okEmpty) &&
              QUILLOW_NO_TEXT_LAYER == int(Reason::noTextLayer) && QUILLOW_PARTIAL == int(Reason::partial) &&
              QUILLOW_WRONG_TYPE == int(Reason::wrongType) && QUILLOW_DAMAGED == int(Reason::damaged) &&
              QUILLOW_LOCKED == int(Reason::locked) && QUILLOW_TOO_LARGE == int(Reason::tooLarge) &&
              QUILLOW_TIMEOUT == int(Reason::timeout) && QUILLOW_OUT_OF_MEMORY == int(Reason::outOfMemory) &&
              QUILLOW_CRASHED == int(Reason::crashed) && QUILLOW_UNREADABLE == int(Reason::unreadable) &&
              QUILLOW_UNWRITABLE == int(Reason::unwritable) && QUILLOW_SKIPPED == int(Reason::skipped));

constexpr std::uint32_t kEveryFlag = QUILLOW_PAGE_MARKS | QUILLOW_CELLS_LINE | QUILLOW_NO_LIST_MARKERS | QUILLOW_LINKS |
                                     QUILLOW_HIDDEN_TEXT | QUILLOW_HEADERS_FOOTERS | QUILLOW_REFLOW;
constexpr std::uint32_t kMaximumThreads = 256;
/// The size of the options in the first version of the library.
constexpr std::size_t kFirstSize = sizeof(quillow_options);
/// Options of a later version are not larger.
constexpr std::size_t kMaximumSize = 4096;

/// The text belongs to the extraction, so it is not copied.
struct OwnedResult : quillow_result {
    Extraction extraction;
};

constexpr quillow_result kNoMemory = {
    sizeof(quillow_result), QUILLOW_OUT_OF_MEMORY, 0, nullptr, 0, "there is no memory for the result", 0, 0, 0, 0, 0};

struct Wanted {
    std::optional<DocumentKind> kind;
    Options options;
};

/// A newer program may pass a larger structure. What this version does not know must then be zero.
bool hasOnlyKnownMembers(const quillow_options& given) {
    if (given.size < kFirstSize || given.size > kMaximumSize) return false;
    const auto* const begin = reinterpret_cast<const unsigned char*>(&given);
    return std::all_of(begin + sizeof(quillow_options), begin + std::max(given.size, sizeof(quillow_options)),
                       [](unsigned char byte) { return byte == 0; });
}

/// The options in the engines' terms, or what is wrong with them.
std::variant<Wanted, std::string> wantedBy(const quillow_options& given) {
    if (!hasOnlyKnownMembers(given) || given.reserved != 0) return "the options are of another version";
    if (given.kind > QUILLOW_PDF) return "the kind of document is not known";
    if ((given.flags & ~kEveryFlag) != 0) return "a flag is not known";
    if (given.threads > kMaximumThreads) return "the number of threads is over 256";
    const auto isOn = [&](std::uint32_t flag) { return (given.flags & flag) != 0; };
    constexpr std::array kKinds = {DocumentKind::rtf, DocumentKind::rtfd, DocumentKind::html, DocumentKind::pdf};
    Wanted wanted;
    if (given.kind != QUILLOW_BY_CONTENT) wanted.kind = kKinds[given.kind - 1];
    Options& options = wanted.options;
    if (isOn(QUILLOW_PAGE_MARKS)) options.pageMarks = PageMarks::formFeed;
    if (isOn(QUILLOW_CELLS_LINE)) options.cells = CellSeparator::line;
    if (isOn(QUILLOW_NO_LIST_MARKERS)) options.listMarkers = ListMarkers::off;
    if (isOn(QUILLOW_LINKS)) options.links = LinkTargets::afterText;
    if (isOn(QUILLOW_HIDDEN_TEXT)) options.hiddenText = HiddenText::on;
    if (isOn(QUILLOW_HEADERS_FOOTERS)) options.headersFooters = HeadersFooters::on;
    if (isOn(QUILLOW_REFLOW)) options.reflow = Reflow::joinLines;
    options.threads = std::max<std::uint32_t>(given.threads, 1);
    if (given.password != nullptr) options.password = given.password;
    if (given.pages == nullptr) return wanted;
    auto pages = parsePageSelection(given.pages);
    if (!pages) return "the pages must be numbers and ranges like 3-7,12,20-";
    options.pages = std::move(*pages);
    return wanted;
}

Extraction extractionOf(std::span<const std::byte> bytes, const quillow_options* given) {
    auto wanted = given != nullptr ? wantedBy(*given) : Wanted{};
    if (auto* const mistake = std::get_if<std::string>(&wanted)) return failed(Reason::unreadable, std::move(*mistake));
    const auto& [kind, options] = std::get<Wanted>(wanted);
    const auto found = kind ? kind : sniffDocumentKind(bytes);
    if (found) return extract(bytes, *found, options);
    if (bytes.empty()) return failed(Reason::damaged, "the input is empty");
    return failed(Reason::wrongType, "the content is not that of an RTF, HTML or PDF document");
}

/// The same without an exception. Short phrases need no memory.
Extraction extractionOrReason(std::span<const std::byte> bytes, const quillow_options* given) noexcept {
    try {
        return extractionOf(bytes, given);
    } catch (const std::bad_alloc&) {
        return failed(Reason::outOfMemory, {});
    } catch (...) {
        return failed(Reason::crashed, {});
    }
}

void show(const Extraction& extraction, quillow_result& shown) {
    shown.size = sizeof shown;
    shown.reason = static_cast<std::int32_t>(extraction.reason);
    if (extraction.text) {
        shown.text = extraction.text->c_str();
        shown.text_size = extraction.text->size();
    }
    shown.detail = extraction.detail.c_str();
    shown.pages = extraction.pages;
    shown.characters_decoded = extraction.loss.charactersDecoded;
    shown.characters_without_unicode = extraction.loss.charactersWithoutUnicode;
    shown.pages_without_text = extraction.loss.pagesWithoutText;
    shown.parts_skipped = extraction.loss.partsSkipped;
}

} // namespace

} // namespace quillow

const quillow_result* quillow_extract(const void* bytes, size_t size, const quillow_options* options) {
    using namespace quillow;
    auto* const owned = new (std::nothrow) OwnedResult{};
    if (owned == nullptr) return &kNoMemory;
    owned->extraction =
        extractionOrReason({static_cast<const std::byte*>(bytes), bytes == nullptr ? 0 : size}, options);
    show(owned->extraction, *owned);
    return owned;
}

void quillow_free(const quillow_result* result) {
    if (result == nullptr || result == &quillow::kNoMemory) return;
    delete static_cast<const quillow::OwnedResult*>(result);
}

const char* quillow_reason_name(int32_t reason) {
    if (reason < QUILLOW_OK || reason > QUILLOW_SKIPPED) return "unknown";
    return quillow::reasonName(static_cast<quillow::Reason>(reason)).data();
}

const char* quillow_version() {
    return QUILLOW_VERSION;
}
