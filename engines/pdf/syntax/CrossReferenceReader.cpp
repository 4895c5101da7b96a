#include "engines/pdf/syntax/CrossReferenceReader.h"

#include "engines/pdf/Limits.h"
#include "engines/pdf/syntax/Lexer.h"
#include "text/Ascii.h"

#include <algorithm>

namespace quillow::pdf {
namespace {

using Kind = CrossReference::Kind;

constexpr std::string_view kTable = "xref";
constexpr std::string_view kTrailer = "trailer";
constexpr std::size_t kHeaderBytes = 1024;                 ///< in which the header may begin (annex I)
constexpr std::size_t kStartBytes = std::size_t{64} << 10; ///< at the end of the file, in which startxref is looked for
constexpr std::size_t kNear = 64;                          ///< how far a table may be from where it should be
constexpr std::uint64_t kHeadOfFreeList = 65535;           ///< the generation of object 0

std::uint64_t readInteger(const char*& p, const char* end) {
    constexpr std::uint64_t kMost = std::uint64_t{1} << 56;
    std::uint64_t value = 0;
    for (; p < end && text::isDigit(*p); ++p)
        value = value < kMost ? value * 10 + static_cast<std::uint64_t>(*p - '0') : value;
    return value;
}

std::uint64_t readDigits(const char* p, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value = value * 10 + static_cast<std::uint8_t>(p[i] - '0');
    return value;
}

/// An entry as the standard has it: "nnnnnnnnnn ggggg n" and two bytes of line end.
constexpr std::ptrdiff_t kEntry = 20;
constexpr std::size_t kOffsetDigits = 10;
constexpr std::size_t kGenerationAt = 11;
constexpr std::size_t kGenerationDigits = 5;
constexpr std::size_t kKindAt = 17;

bool isPlainEntry(const char* p) {
    return text::isDigit(p[0]) && p[kOffsetDigits] == ' ' && text::isDigit(p[kGenerationAt]) && p[kKindAt - 1] == ' ' &&
           (p[kKindAt] == 'n' || p[kKindAt] == 'f') && isWhiteSpace(p[kKindAt + 1]) && isWhiteSpace(p[kKindAt + 2]);
}

} // namespace

CrossReferenceReader::CrossReferenceReader(std::string_view file, std::size_t base, const FileKeywords& keywords,
                                           Arena& arena)
    : file_(file)
    , base_(base)
    , keywords_(&keywords)
    , arena_(&arena)
    , parser_(arena)
    , decoder_(kMaximumDecodedTotal) {}

std::optional<CrossReferences> CrossReferenceReader::read(std::size_t startOffset) {
    Offsets next = {static_cast<std::int64_t>(startOffset)};
    while (!next.empty()) {
        const std::optional<std::size_t> position = positionOf(next.back());
        next.pop_back();
        if (!position || parsed_ > kMaximumParsed) return std::nullopt;
        if (isVisited(*position)) continue;
        if (!readSection(*position, next)) return std::nullopt;
    }
    found_.trailer = mergedTrailer(trailers_, *arena_);
    return std::move(found_);
}

std::optional<std::size_t> CrossReferenceReader::positionOf(std::int64_t offset) const {
    const auto size = static_cast<std::int64_t>(file_.size() - base_);
    if (offset < 0 || offset >= size) return std::nullopt;
    return base_ + static_cast<std::size_t>(offset);
}

/// Whether a section was read before: chains may be cycles. Says yes too if too many were.
bool CrossReferenceReader::isVisited(std::size_t position) {
    return visited_.size() == kMaximumSections || !visited_.insert(position).second;
}

bool CrossReferenceReader::readSection(std::size_t position, Offsets& next) {
    if (const auto header = objectHeaderAt(file_, position)) {
        Dictionary dictionary;
        if (!readStream(*header, dictionary)) return false;
        trailers_.push_back(dictionary);
        if (const std::int64_t previous = dictionary.find("Prev").integerOr(0); previous > 0) next.push_back(previous);
        return true;
    }
    return readTable(nearestTable(position), next);
}

/// The table at a position, or the one next to it; the end of the file if there is none.
std::size_t CrossReferenceReader::nearestTable(std::size_t position) const {
    const char* const end = file_.data() + file_.size();
    const auto at = static_cast<std::size_t>(skipWhiteSpace(file_.data() + position, end) - file_.data());
    if (file_.substr(at, kTable.size()) == kTable) return at;
    const std::size_t from = position - std::min(position, kNear);
    const std::string_view around = file_.substr(from, 2 * kNear);
    for (std::size_t found = 0; (found = around.find(kTable, found)) != std::string_view::npos; ++found)
        if (found == 0 || isWhiteSpace(around[found - 1])) return from + found;
    return file_.size();
}

bool CrossReferenceReader::readTable(std::size_t position, Offsets& next) {
    if (position == file_.size()) return false;
    const char* const end = file_.data() + file_.size();
    free_.clear();
    const char* p = readEntries(file_.data() + position + kTable.size());
    if (std::string_view(p, static_cast<std::size_t>(end - p)).substr(0, kTrailer.size()) != kTrailer) return false;
    const ParsedObject parsed = parser_.parse(p + kTrailer.size(), end);
    parsed_ += static_cast<std::size_t>(parsed.end - p);
    if (parsed.object.type() != Object::Type::dictionary) return false;
    const Dictionary trailer = parsed.object.dictionary();
    trailers_.push_back(trailer);
    if (!readHybrid(trailer)) return false;
    addFreeEntries();
    if (const std::int64_t previous = trailer.find("Prev").integerOr(0); previous > 0) next.push_back(previous);
    return true;
}

/// Reads subsections (7.5.4). Its n or f distinguishes an entry from the head of a subsection, because counts may be
/// wrong and entries have 18 to 21 bytes. Returns where something else begins.
const char* CrossReferenceReader::readEntries(const char* p) {
    const char* const end = file_.data() + file_.size();
    while (true) {
        p = skipWhiteSpace(p, end);
        if (p == end || !text::isDigit(*p)) return p;
        const char* const first = p;
        const std::uint64_t a = readInteger(p, end);
        p = skipWhiteSpace(p, end);
        if (p == end || !text::isDigit(*p)) return first;
        const std::uint64_t b = readInteger(p, end);
        const char* const kind = skipWhiteSpace(p, end);
        if (kind < end && (*kind == 'n' || *kind == 'f')) {
            addEntry(a, b, *kind);
            p = kind + 1;
        } else {
            number_ = a;
            p = readPlainEntries(kind, b);
        }
        if (entriesLeft_ == 0) return p;
    }
}

/// The same for entries that are as the standard has them.
const char* CrossReferenceReader::readPlainEntries(const char* p, std::uint64_t count) {
    const char* const end = file_.data() + file_.size();
    for (; count > 0 && end - p >= kEntry && isPlainEntry(p) && entriesLeft_ > 0; --count, p += kEntry)
        addEntry(readDigits(p, kOffsetDigits), readDigits(p + kGenerationAt, kGenerationDigits), p[kKindAt]);
    return p;
}

void CrossReferenceReader::addEntry(std::uint64_t position, std::uint64_t generation, char kind) {
    if (entriesLeft_ == 0) return;
    --entriesLeft_;
    // Some producers count from 1, and the first entry is the one of object 0 all the same.
    if (number_ == 1 && kind == 'f' && position == 0 && generation == kHeadOfFreeList) number_ = 0;
    const std::uint64_t number = number_++;
    const std::uint64_t place = position + base_;
    if (kind == 'f' || position == 0 || place >= file_.size()) {
        free_.push_back(number);
    } else {
        found_.add(number, {static_cast<std::uint32_t>(place),
                            static_cast<std::uint16_t>(std::min(generation, kHeadOfFreeList)), Kind::inFile});
    }
}

void CrossReferenceReader::addFreeEntries() {
    for (const std::uint64_t number : free_)
        found_.add(number, {0, 0, Kind::free});
}

/// Objects that the table of a hybrid file calls free may be in the stream that belongs to it (7.5.8.4).
bool CrossReferenceReader::readHybrid(const Dictionary& trailer) {
    const std::optional<std::size_t> position = positionOf(trailer.find("XRefStm").integerOr(-1));
    if (!position || isVisited(*position)) return true;
    const auto header = objectHeaderAt(file_, *position);
    Dictionary dictionary;
    return header && readStream(*header, dictionary);
}

std::optional<std::size_t> startOffsetOf(std::string_view file) {
    constexpr std::string_view kKeyword = "startxref";
    const std::string_view tail = file.substr(file.size() - std::min(file.size(), kStartBytes));
    const std::size_t at = tail.rfind(kKeyword);
    if (at == std::string_view::npos) return std::nullopt;
    const char* const end = file.data() + file.size();
    const char* p = skipWhiteSpace(tail.data() + at + kKeyword.size(), end);
    if (p == end || !text::isDigit(*p)) return std::nullopt;
    return readInteger(p, end);
}

std::size_t headerOffsetOf(std::string_view file) {
    const std::size_t at = file.substr(0, kHeaderBytes).find("%PDF-");
    return at == std::string_view::npos ? 0 : at;
}

} // namespace quillow::pdf
