#include "engines/pdf/syntax/KeywordScan.h"

#include "engines/pdf/syntax/Lexer.h"
#include "text/Ascii.h"
#include "text/ByteBlock.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace quillow::pdf {
namespace {

constexpr std::string_view kObject = "obj";
constexpr std::string_view kEndPrefix = "end";
constexpr std::string_view kStreamSuffix = "stream";
constexpr std::size_t kMostDigits = 10; ///< of an object number, as in cross-reference tables

/// The position of the first `kFirst kSecond kThird` at or after `from`, or npos.
template <char kFirst, char kSecond, char kThird>
std::size_t findThree(std::string_view bytes, std::size_t from) {
#ifdef __SSE2__
    for (; from + text::kBlock + 2 <= bytes.size(); from += text::kBlock) {
        const char* p = bytes.data() + from;
        const unsigned found = text::maskOf<kFirst>(text::loadBlock(p)) &
                               text::maskOf<kSecond>(text::loadBlock(p + 1)) &
                               text::maskOf<kThird>(text::loadBlock(p + 2));
        if (found != 0) return from + static_cast<std::size_t>(std::countr_zero(found));
    }
#endif
    constexpr char kThree[] = {kFirst, kSecond, kThird};
    return from > bytes.size() ? std::string_view::npos : bytes.find(std::string_view(kThree, 3), from);
}

struct Digits {
    std::uint64_t value = 0;
    std::size_t begin = 0;
    std::size_t end = 0;

    [[nodiscard]] bool none() const { return begin == end; }
};

Digits digitsAt(std::string_view file, std::size_t at) {
    Digits digits{0, at, at};
    while (digits.end < file.size() && digits.end - at < kMostDigits && text::isDigit(file[digits.end]))
        digits.value = digits.value * 10 + static_cast<std::uint64_t>(file[digits.end++] - '0');
    return digits;
}

/// The digits that end before `end`.
std::size_t digitsBefore(std::string_view file, std::size_t end) {
    std::size_t begin = end;
    while (begin > 0 && end - begin < kMostDigits && text::isDigit(file[begin - 1]))
        --begin;
    return begin;
}

constexpr std::size_t kMostSpace = 32; ///< white space before and between the parts of a header

std::size_t skipSpace(std::string_view file, std::size_t at) {
    const std::size_t most = std::min(file.size(), at + kMostSpace);
    while (at < most && isWhiteSpace(file[at]))
        ++at;
    return at;
}

std::size_t skipSpaceBefore(std::string_view file, std::size_t at) {
    const std::size_t least = at - std::min(at, kMostSpace);
    while (at > least && isWhiteSpace(file[at - 1]))
        --at;
    return at;
}

/// Where the header begins whose keyword is at an offset; the offset itself if there is no header.
std::size_t headerBefore(std::string_view file, std::size_t keyword) {
    const std::size_t generationEnd = skipSpaceBefore(file, keyword);
    const std::size_t generation = digitsBefore(file, generationEnd);
    const std::size_t numberEnd = skipSpaceBefore(file, generation);
    if (generation == generationEnd || numberEnd == generation) return keyword;
    const std::size_t number = digitsBefore(file, numberEnd);
    return number == numberEnd ? keyword : number;
}

bool isAt(std::string_view file, std::size_t at, std::string_view word) {
    return at <= file.size() && file.substr(at, word.size()) == word;
}

} // namespace

std::optional<ObjectHeader> objectHeaderAt(std::string_view file, std::size_t offset) {
    if (offset >= file.size()) return std::nullopt;
    const Digits number = digitsAt(file, skipSpace(file, offset));
    const Digits generation = digitsAt(file, skipSpace(file, number.end));
    const std::size_t keyword = skipSpace(file, generation.end);
    if (number.none() || generation.none() || number.end == generation.begin || !isAt(file, keyword, kObject)) {
        return std::nullopt;
    }
    constexpr std::uint64_t kMostNumbers = std::numeric_limits<std::uint32_t>::max();
    constexpr std::uint64_t kMostGenerations = std::numeric_limits<std::uint16_t>::max();
    if (number.value > kMostNumbers) return std::nullopt;
    return ObjectHeader{{static_cast<std::uint32_t>(number.value),
                         static_cast<std::uint16_t>(std::min(generation.value, kMostGenerations))},
                        static_cast<std::uint32_t>(number.begin),
                        static_cast<std::uint32_t>(keyword + kObject.size())};
}

std::optional<std::size_t> Keywords::firstAfter(std::size_t offset) const {
    const auto end = std::lower_bound(ends.begin(), ends.end(), offset);
    const auto header = std::lower_bound(headers.begin(), headers.end(), offset,
                                         [](const ObjectHeader& a, std::size_t wanted) { return a.begin < wanted; });
    std::optional<std::size_t> first;
    if (end != ends.end()) first = *end;
    if (header != headers.end() && (!first || header->begin < *first)) first = header->begin;
    return first;
}

Keywords findKeywords(std::string_view file) {
    Keywords keywords;
    for (std::size_t at = 0; (at = findThree<'o', 'b', 'j'>(file, at)) != std::string_view::npos;
         at += kObject.size()) {
        if (at >= kEndPrefix.size() && isAt(file, at - kEndPrefix.size(), kEndPrefix)) {
            keywords.ends.push_back(static_cast<std::uint32_t>(at - kEndPrefix.size()));
        } else if (const std::size_t begin = headerBefore(file, at); begin != at) {
            if (const auto header = objectHeaderAt(file, begin)) keywords.headers.push_back(*header);
        }
    }
    const auto objects = static_cast<std::ptrdiff_t>(keywords.ends.size());
    for (std::size_t at = 0; (at = findThree<'e', 'n', 'd'>(file, at)) != std::string_view::npos;
         at += kEndPrefix.size())
        if (isAt(file, at + kEndPrefix.size(), kStreamSuffix)) keywords.ends.push_back(static_cast<std::uint32_t>(at));
    std::inplace_merge(keywords.ends.begin(), keywords.ends.begin() + objects, keywords.ends.end());
    return keywords;
}

std::vector<std::uint32_t> findAll(std::string_view file, std::string_view word) {
    std::vector<std::uint32_t> places;
    for (std::size_t at = 0; (at = file.find(word, at)) != std::string_view::npos; at += word.size())
        places.push_back(static_cast<std::uint32_t>(at));
    return places;
}

} // namespace quillow::pdf
