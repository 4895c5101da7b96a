#include "engines/pdf/fonts/CMap.h"

#include "text/Unicode.h"

#include <algorithm>

namespace quillow::pdf {

namespace {

/// Marks the value of a code that shows several characters.
constexpr std::uint32_t kSeveral = 0x80000000;
/// A range whose codes show several characters each: the last of them increases, so no sensible one is longer.
constexpr std::uint32_t kMaximumRangeOfSeveral = 256;

// Shares of a CMap's codes from which it is judged. Among a thousand ToUnicode CMaps of real files with at least four
// codes, the sound ones show one character for at most a quarter of their codes, and controls for less.
constexpr std::uint64_t kFewestCodesToJudge = 4;
/// More than three of four codes show the same character.
constexpr bool isTooMany(std::uint64_t repeated, std::uint64_t all) {
    return repeated > all / 4 * 3 + all % 4 * 3 / 4;
}
/// Most codes show controls.
constexpr bool isMost(std::uint64_t part, std::uint64_t all) {
    return part > all / 2;
}
/// All but one of sixteen.
constexpr bool isNearlyAll(std::uint64_t part, std::uint64_t all) {
    return part >= all - all / 16;
}

/// How many numbers of [low, high] are in [from, to].
constexpr std::uint64_t overlap(std::uint64_t low, std::uint64_t high, std::uint64_t from, std::uint64_t to) {
    const std::uint64_t first = std::max(low, from);
    const std::uint64_t last = std::min(high, to);
    return first <= last ? last - first + 1 : 0;
}

/// How many codes of a range show a control other than a blank.
std::uint64_t controlsOf(const CodeRange& range) {
    const std::uint64_t low = range.value;
    const std::uint64_t high = low + range.size() - 1;
    return overlap(low, high, 0x01, 0x08) + overlap(low, high, 0x0E, 0x1F) + overlap(low, high, 0x7F, 0x84) +
           overlap(low, high, 0x86, 0x9F);
}

} // namespace

void CMap::addCharacters(std::uint32_t low, std::uint32_t high, std::u32string_view characters) {
    if (low > high) return;
    if (characters.empty()) {
        ++emptyDestinations_;
        return;
    }
    if (characters.size() == 1) {
        const std::uint32_t room = text::kLastCodePoint - std::min(characters.front(), text::kLastCodePoint);
        characters_.add({low, low + std::min(high - low, room), characters.front()});
        return;
    }
    // The last character increases with the code (9.10.3).
    std::u32string several(characters);
    const std::uint32_t count = std::min(high - low, kMaximumRangeOfSeveral - 1) + 1;
    for (std::uint32_t i = 0; i < count; ++i, ++several.back())
        addSeveral(low + i, several);
}

void CMap::addSeveral(std::uint32_t code, std::u32string_view characters) {
    if (several_.size() + characters.size() + 1 > kMaximumSeveral) return;
    characters_.add({code, code, kSeveral | static_cast<std::uint32_t>(several_.size())});
    several_.push_back(static_cast<char32_t>(characters.size()));
    several_.append(characters);
}

void CMap::close() {
    cids_.close();
    characters_.close();
    judge();
}

void CMap::judge() {
    std::uint64_t codes = 0;
    std::uint64_t controls = 0;
    std::uint64_t same = 0;
    for (const CodeRange& range : characters_.all()) {
        codes += range.size();
        controls += controlsOf(range);
        if (range.low == range.value) same += range.size();
    }
    isDoubtful_ = emptyDestinations_ >= codes && codes + emptyDestinations_ >= kFewestCodesToJudge;
    if (codes < kFewestCodesToJudge) return;
    isDoubtful_ = isDoubtful_ || isNearlyAll(same, codes);
    isNonsense_ = isMost(controls, codes);
    if (const auto value = mostRepeatedValue()) {
        const auto repeated = std::count_if(characters_.all().begin(), characters_.all().end(),
                                            [&](const CodeRange& range) { return range.value == *value; });
        if (isTooMany(static_cast<std::uint64_t>(repeated), codes)) distrustedValue_ = value;
    }
}

/// The value of more than half of the ranges, if there is one (Boyer and Moore's majority vote). Only ranges of one
/// code repeat a value.
std::optional<std::uint32_t> CMap::mostRepeatedValue() const {
    std::uint32_t value = 0;
    std::size_t lead = 0;
    for (const CodeRange& range : characters_.all()) {
        if (lead == 0) value = range.value;
        if (range.value == value)
            ++lead;
        else
            --lead;
    }
    return lead > 0 ? std::optional(value) : std::nullopt;
}

void CMap::charactersOf(std::uint32_t code, std::u32string& out) const {
    out.clear();
    if (isNonsense_) return;
    const std::optional<std::uint32_t> value = characters_.find(code);
    if (!value || value == distrustedValue_) return;
    if ((*value & kSeveral) == 0) {
        out = static_cast<char32_t>(*value);
        return;
    }
    const std::size_t offset = *value & ~kSeveral;
    out.assign(several_, offset + 1, several_[offset]);
}

} // namespace quillow::pdf
