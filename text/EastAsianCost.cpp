// The cost of an East Asian encoding: how uncommon the characters of a sample are in its language.
#include "text/DetectorScores.h"
#include "text/PairTable.h"

#include <algorithm>

namespace quillow::text {

namespace {

using Cost = std::uint32_t;
constexpr Cost bitsCost(unsigned bits) {
    return bits * kStepsPerBit;
}

constexpr Cost kUsualCharacter = bitsCost(13);   ///< first level of the standard, or the language's syllables
constexpr Cost kUnusualCharacter = bitsCost(16); ///< second level of the standard
constexpr Cost kRareCharacter = bitsCost(19);    ///< vendor extensions and later additions
constexpr Cost kSymbol = bitsCost(14);
constexpr Cost kHalfwidthKatakana = bitsCost(11);
constexpr Cost kAsciiLetter = bitsCost(9) / 2;
constexpr Cost kBesideAsciiLetter = bitsCost(3);
constexpr Cost kSeparator = bitsCost(3);
constexpr Cost kError = bitsCost(24);

bool isBetween(unsigned byte, unsigned first, unsigned last) {
    return byte >= first && byte <= last;
}

/// The cost of a character that is not among the common ones, by the position of its code in the set.
Cost placeCost(Encoding encoding, unsigned lead, unsigned trail, char32_t c) {
    if (c >= 0xE000 && c <= 0xF8FF) return kError;
    const bool row94 = lead >= 0xA1 && trail >= 0xA1;
    switch (encoding) {
    case Encoding::shiftJis:
        if (isBetween(lead, 0x88, 0x97)) return kUsualCharacter;
        if (isBetween(lead, 0x98, 0x9F) || isBetween(lead, 0xE0, 0xEA)) return kUnusualCharacter;
        return lead <= 0x84 ? kSymbol : kRareCharacter;
    case Encoding::eucJp:
        if (isBetween(lead, 0xB0, 0xCF)) return kUsualCharacter;
        if (isBetween(lead, 0xD0, 0xF4)) return kUnusualCharacter;
        return lead <= 0xA8 ? kSymbol : kRareCharacter;
    case Encoding::eucKr:
        if (!row94) return kRareCharacter;
        if (isBetween(lead, 0xB0, 0xC8)) return kUsualCharacter;
        return lead <= 0xAC ? kSymbol : kRareCharacter;
    case Encoding::big5:
        if (isBetween(lead, 0xA4, 0xC6)) return kUsualCharacter;
        if (isBetween(lead, 0xC9, 0xF9)) return kUnusualCharacter;
        return isBetween(lead, 0xA1, 0xA3) ? kSymbol : kRareCharacter;
    default:
        if (!row94) return kRareCharacter;
        if (isBetween(lead, 0xB0, 0xD7)) return kUsualCharacter;
        if (isBetween(lead, 0xD8, 0xF7)) return kUnusualCharacter;
        return isBetween(lead, 0xA1, 0xA3) ? kSymbol : kRareCharacter;
    }
}

/// A double-byte set and the costs of the common characters of its language.
class Set {
public:
    Set(const PairTable& pairs, const CommonCharacters& common)
        : pairs_(pairs)
        , costs_(0x10000) {
        for (std::size_t level = 0; level < CommonCharacters::kLevels; ++level)
            for (const char16_t c : common.levels[level])
                costs_[c] =
                    static_cast<std::uint8_t>(bitsCost(static_cast<unsigned>(CommonCharacters::kFirstLevel + level)));
    }

    [[nodiscard]] char32_t decode(unsigned lead, unsigned trail) const {
        return pairs_.decode(static_cast<std::uint8_t>(lead), static_cast<std::uint8_t>(trail));
    }
    /// 0 for a character that is not common.
    [[nodiscard]] Cost commonCost(char32_t c) const { return c < costs_.size() ? costs_[c] : 0; }

private:
    const PairTable& pairs_;
    std::vector<std::uint8_t> costs_;
};

Set setOf(Encoding encoding) {
    switch (encoding) {
    case Encoding::shiftJis: return {kShiftJisPairs, kJapanese};
    case Encoding::eucJp: return {kEucJpPairs, kJapanese};
    case Encoding::eucKr: return {kUhcPairs, kKorean};
    case Encoding::big5: return {kBig5Pairs, kTraditionalChinese};
    default: return {kGbkPairs, kSimplifiedChinese};
    }
}

struct Step {
    std::size_t length;
    Cost cost;
};

/// The length and the cost of the character at the start of `bytes`, whose first byte is over 0x7F.
Step highStep(std::string_view bytes, Encoding encoding, const Set& set) {
    const auto at = [bytes](std::size_t i) { return i < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) : 0U; };
    const unsigned lead = at(0);
    if (encoding == Encoding::shiftJis && isBetween(lead, 0xA1, 0xDF)) return {1, kHalfwidthKatakana};
    if (encoding == Encoding::eucJp && lead == 0x8E && isBetween(at(1), 0xA1, 0xDF))
        return {2, kHalfwidthKatakana + kSymbol};
    if (encoding == Encoding::eucJp && lead == 0x8F && isBetween(at(1), 0xA1, 0xFE) && isBetween(at(2), 0xA1, 0xFE))
        return {3, kRareCharacter};
    if (encoding == Encoding::gb18030 && isBetween(at(1), 0x30, 0x39) && isBetween(at(2), 0x81, 0xFE) &&
        isBetween(at(3), 0x30, 0x39))
        return {4, kRareCharacter};
    const char32_t c = set.decode(lead, at(1));
    if (c == 0) return {1, kError};
    const Cost common = set.commonCost(c);
    return {2, common != 0 ? common : placeCost(encoding, lead, at(1), c)};
}

bool isAsciiLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

} // namespace

std::uint64_t eastAsianCost(const DetectorSample& sample, Encoding encoding, std::uint64_t limit) {
    const Set set = setOf(encoding);
    std::string_view bytes = sample.words;
    std::uint64_t cost = 0;
    enum class Last { separator, letter, character } last = Last::separator;
    while (!bytes.empty() && cost <= limit) {
        const char byte = bytes.front();
        if (static_cast<std::uint8_t>(byte) >= 0x80) {
            const Step step = highStep(bytes, encoding, set);
            cost += step.cost + (last == Last::letter ? kBesideAsciiLetter : 0);
            last = Last::character;
            bytes.remove_prefix(std::min(step.length, bytes.size()));
            continue;
        }
        if (isAsciiLetter(byte)) {
            cost += kAsciiLetter + (last == Last::character ? kBesideAsciiLetter : 0);
            last = Last::letter;
        } else {
            cost += kSeparator;
            last = Last::separator;
        }
        bytes.remove_prefix(1);
    }
    return cost;
}

} // namespace quillow::text
