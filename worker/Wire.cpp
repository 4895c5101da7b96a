#include "worker/Wire.h"

#include "text/Utf8.h"
#include "worker/Limits.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

namespace quillow::worker {

namespace {

class Writer {
public:
    void number(std::uint64_t value) {
        char bytes[sizeof value];
        std::memcpy(bytes, &value, sizeof value);
        out_.append(bytes, sizeof bytes);
    }
    template <class Enum>
    void choice(Enum value) {
        number(static_cast<std::uint64_t>(value));
    }
    void text(std::string_view value) {
        number(value.size());
        out_ += value;
    }
    [[nodiscard]] std::string done() && { return std::move(out_); }

private:
    std::string out_;
};

/// Reads what Writer wrote. After a mistake every further value is empty and `isWhole` is false.
class Reader {
public:
    explicit Reader(std::string_view body)
        : rest_(body) {}

    std::uint64_t number() {
        std::uint64_t value = 0;
        if (rest_.size() < sizeof value) return fail();
        std::memcpy(&value, rest_.data(), sizeof value);
        rest_.remove_prefix(sizeof value);
        return value;
    }
    bool flag() { return choice(true); }
    /// A value of an enumeration whose values begin at 0 and end with `last`.
    template <class Enum>
    Enum choice(Enum last) {
        const std::uint64_t value = number();
        return static_cast<Enum>(value <= static_cast<std::uint64_t>(last) ? value : fail());
    }
    std::string_view text() {
        const std::uint64_t size = number();
        if (size > rest_.size()) return rest_.substr(0, fail());
        const std::string_view value = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return value;
    }
    /// False after a mistake.
    [[nodiscard]] bool mayGoOn() const { return !hasFailed_; }
    /// True if there was no mistake and nothing is left.
    [[nodiscard]] bool isWhole() const { return !hasFailed_ && rest_.empty(); }

private:
    std::uint64_t fail() {
        hasFailed_ = true;
        return 0;
    }

    std::string_view rest_;
    bool hasFailed_ = false;
};

PageSelection readPages(Reader& reader) {
    std::vector<PageRange> ranges;
    for (std::uint64_t left = reader.number(); left > 0 && reader.mayGoOn(); --left) {
        const auto first = static_cast<std::uint32_t>(reader.number());
        ranges.push_back({first, static_cast<std::uint32_t>(reader.number())});
    }
    return PageSelection(std::move(ranges));
}

/// The reasons that an engine gives. The others are decided outside of it.
bool isReasonOfAnEngine(Reason reason) {
    switch (reason) {
    case Reason::ok:
    case Reason::okEmpty:
    case Reason::noTextLayer:
    case Reason::partial:
    case Reason::wrongType:
    case Reason::damaged:
    case Reason::locked:
    case Reason::tooLarge:
    case Reason::outOfMemory:
    case Reason::unreadable: return true;
    case Reason::timeout:
    case Reason::crashed:
    case Reason::unwritable:
    case Reason::skipped: return false;
    }
    return false;
}

/// Printable, in one line.
bool isDetail(std::string_view detail) {
    if (detail.size() > kMaximumDetail || !text::isValidUtf8(detail)) return false;
    for (const char c : detail)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return false;
    return true;
}

/// True if the text has no byte of the controls C0 and DEL but TAB, LF and, if allowed, FF.
bool hasOnlyAllowedControls(std::string_view text, PageMarks pageMarks) {
    // Counting without a branch lets the compiler test many bytes at a time.
    std::size_t controls = 0;
    std::size_t allowed = 0;
    std::size_t formFeeds = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        controls += static_cast<std::size_t>((byte < 0x20) | (byte == 0x7F));
        allowed += static_cast<std::size_t>((byte == '\t') | (byte == '\n'));
        formFeeds += static_cast<std::size_t>(byte == '\f');
    }
    return controls == allowed + (pageMarks == PageMarks::formFeed ? formFeeds : 0);
}

/// The controls C1, U+0080 to U+009F, are C2 80 to C2 9F.
bool hasLatinControls(std::string_view text) {
    for (std::size_t at = text.find('\xC2'); at != std::string_view::npos; at = text.find('\xC2', at + 2))
        if (at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) < 0xA0) return true;
    return false;
}

bool isInTextForm(std::string_view text, const Options& options) {
    if (text.empty()) return true;
    return text.back() == '\n' && !text.starts_with("\xEF\xBB\xBF") &&
           hasOnlyAllowedControls(text, options.pageMarks) && text::isValidUtf8(text) && !hasLatinControls(text);
}

bool textFits(const Extraction& extraction) {
    switch (extraction.reason) {
    case Reason::ok: return extraction.text && !extraction.text->empty();
    case Reason::okEmpty: return extraction.text && extraction.text->empty();
    case Reason::partial: return extraction.text.has_value();
    default: return !extraction.text;
    }
}

} // namespace

EncodedSizes encode(const Sizes& sizes) {
    EncodedSizes encoded{};
    std::memcpy(encoded.data(), &sizes.body, sizeof sizes.body);
    std::memcpy(encoded.data() + sizeof sizes.body, &sizes.bytes, sizeof sizes.bytes);
    return encoded;
}

Sizes decodeSizes(const EncodedSizes& encoded) {
    Sizes sizes;
    std::memcpy(&sizes.body, encoded.data(), sizeof sizes.body);
    std::memcpy(&sizes.bytes, encoded.data() + sizeof sizes.body, sizeof sizes.bytes);
    return sizes;
}

std::string encodeGreeting(const Isolation& isolation) {
    Writer writer;
    writer.number(kWireVersion);
    writer.number(isolation.landlockAbi);
    for (const bool isOn : {isolation.systemCalls, isolation.memory, isolation.limits, isolation.privileges})
        writer.choice(isOn);
    return std::move(writer).done();
}

std::optional<Isolation> decodeGreeting(std::string_view body) {
    Reader reader(body);
    if (reader.number() != kWireVersion) return std::nullopt;
    Isolation isolation;
    isolation.landlockAbi = static_cast<std::uint32_t>(reader.number());
    for (bool* const isOn : {&isolation.systemCalls, &isolation.memory, &isolation.limits, &isolation.privileges})
        *isOn = reader.flag();
    return reader.isWhole() ? std::optional(isolation) : std::nullopt;
}

std::optional<std::string> encodeRequest(const Request& request) {
    // The names must be as many as the fields, so a new option cannot be forgotten here.
    const auto& [kind, options, explainedPage] = request.question;
    const auto& [pageMarks, cells, listMarkers, links, hiddenText, headersFooters, reflow, threads, runTogether, pages,
                 password] = options;
    static_cast<void>(runTogether); // a worker has its own threads
    if (password.size() > kMaximumBody / 2) return std::nullopt;
    Writer writer;
    writer.number(request.token);
    writer.choice(kind);
    writer.number(explainedPage);
    writer.choice(request.delivery);
    writer.number(request.maximumText);
    writer.choice(pageMarks);
    writer.choice(cells);
    writer.choice(listMarkers);
    writer.choice(links);
    writer.choice(hiddenText);
    writer.choice(headersFooters);
    writer.choice(reflow);
    writer.number(threads);
    writer.number(pages.ranges().size());
    for (const auto& [first, last] : pages.ranges()) {
        writer.number(first);
        writer.number(last);
    }
    writer.text(password);
    return std::move(writer).done();
}

std::optional<Request> decodeRequest(std::string_view body) {
    Reader reader(body);
    Request request;
    request.token = reader.number();
    request.question.kind = reader.choice(DocumentKind::pdf);
    request.question.explainedPage = reader.number();
    request.delivery = reader.choice(Delivery::descriptor);
    request.maximumText = reader.number();
    auto& [pageMarks, cells, listMarkers, links, hiddenText, headersFooters, reflow, threads, runTogether, pages,
           password] = request.question.options;
    static_cast<void>(runTogether);
    pageMarks = reader.choice(PageMarks::formFeed);
    cells = reader.choice(CellSeparator::line);
    listMarkers = reader.choice(ListMarkers::off);
    links = reader.choice(LinkTargets::afterText);
    hiddenText = reader.choice(HiddenText::on);
    headersFooters = reader.choice(HeadersFooters::on);
    reflow = reader.choice(Reflow::joinLines);
    threads = static_cast<unsigned>(std::min<std::uint64_t>(reader.number(), kMaximumThreads));
    pages = readPages(reader);
    password = reader.text();
    return reader.isWhole() ? std::optional(std::move(request)) : std::nullopt;
}

std::string encodeAnswer(Token token, const Extraction& extraction) {
    const auto& [reason, text, detail, loss, pages] = extraction;
    const auto& [decoded, withoutUnicode, withoutText, skipped] = loss;
    Writer writer;
    writer.number(token);
    writer.choice(reason);
    writer.choice(text.has_value());
    writer.text(text::isValidUtf8(detail)
                    ? std::string_view(detail).substr(
                          0, text::validUtf8PrefixLength(std::string_view(detail).substr(0, kMaximumDetail)))
                    : std::string_view());
    for (const std::uint64_t count : {decoded, withoutUnicode, withoutText, skipped, pages})
        writer.number(count);
    return std::move(writer).done();
}

std::optional<Extraction> decodeAnswer(std::string_view body, std::string text, Token token, const Options& options) {
    Reader reader(body);
    if (reader.number() != token) return std::nullopt;
    Extraction extraction;
    extraction.reason = reader.choice(Reason::skipped);
    const bool hasText = reader.flag();
    extraction.detail = reader.text();
    for (std::uint64_t* const count :
         {&extraction.loss.charactersDecoded, &extraction.loss.charactersWithoutUnicode,
          &extraction.loss.pagesWithoutText, &extraction.loss.partsSkipped, &extraction.pages})
        *count = reader.number();
    if (!reader.isWhole() || !isReasonOfAnEngine(extraction.reason) || !isDetail(extraction.detail))
        return std::nullopt;
    if (!hasText && !text.empty()) return std::nullopt;
    if (!isInTextForm(text, options)) return std::nullopt;
    if (hasText) extraction.text = std::move(text);
    return textFits(extraction) ? std::optional(std::move(extraction)) : std::nullopt;
}

} // namespace quillow::worker
