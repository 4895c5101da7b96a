#include "engines/pdf/layout/Bidi.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace quillow::pdf {

namespace {

struct Range {
    char32_t first;
    char32_t last;
    Direction direction;
};

/// Blocks and characters that are not left-to-right letters (DerivedBidiClass.txt of the Unicode Character Database),
/// in order. Not distinguished here: R from AL, EN from AN, the separators from one another.
constexpr Range kRanges[] = {
    {0x0000, 0x0022, Direction::neutral}, {0x0023, 0x0025, Direction::neutral}, {0x0026, 0x002F, Direction::neutral},
    {0x0030, 0x0039, Direction::number},  {0x003A, 0x0040, Direction::neutral}, {0x005B, 0x0060, Direction::neutral},
    {0x007B, 0x00A9, Direction::neutral}, {0x00AB, 0x00B1, Direction::neutral}, {0x00B2, 0x00B3, Direction::number},
    {0x00B4, 0x00B4, Direction::neutral}, {0x00B6, 0x00B8, Direction::neutral}, {0x00B9, 0x00B9, Direction::number},
    {0x00BB, 0x00BF, Direction::neutral}, {0x00D7, 0x00D7, Direction::neutral}, {0x00F7, 0x00F7, Direction::neutral},
    {0x0300, 0x036F, Direction::mark},    {0x0590, 0x0590, Direction::right},   {0x0591, 0x05BD, Direction::mark},
    {0x05BE, 0x05BE, Direction::right},   {0x05BF, 0x05BF, Direction::mark},    {0x05C0, 0x05C0, Direction::right},
    {0x05C1, 0x05C2, Direction::mark},    {0x05C3, 0x05C3, Direction::right},   {0x05C4, 0x05C5, Direction::mark},
    {0x05C6, 0x05C6, Direction::right},   {0x05C7, 0x05C7, Direction::mark},    {0x05C8, 0x05FF, Direction::right},
    {0x0600, 0x0605, Direction::number},  {0x0606, 0x0607, Direction::neutral}, {0x0608, 0x0608, Direction::right},
    {0x0609, 0x060A, Direction::neutral}, {0x060B, 0x060B, Direction::right},   {0x060C, 0x060C, Direction::neutral},
    {0x060D, 0x060D, Direction::right},   {0x060E, 0x060F, Direction::neutral}, {0x0610, 0x061A, Direction::mark},
    {0x061B, 0x064A, Direction::right},   {0x064B, 0x065F, Direction::mark},    {0x0660, 0x0669, Direction::number},
    {0x066A, 0x066A, Direction::neutral}, {0x066B, 0x066C, Direction::number},  {0x066D, 0x066F, Direction::right},
    {0x0670, 0x0670, Direction::mark},    {0x0671, 0x06D5, Direction::right},   {0x06D6, 0x06DC, Direction::mark},
    {0x06DD, 0x06DD, Direction::number},  {0x06DE, 0x06DE, Direction::neutral}, {0x06DF, 0x06E4, Direction::mark},
    {0x06E5, 0x06E6, Direction::right},   {0x06E7, 0x06E8, Direction::mark},    {0x06E9, 0x06E9, Direction::neutral},
    {0x06EA, 0x06ED, Direction::mark},    {0x06EE, 0x06EF, Direction::right},   {0x06F0, 0x06F9, Direction::number},
    {0x06FA, 0x0710, Direction::right},   {0x0711, 0x0711, Direction::mark},    {0x0712, 0x072F, Direction::right},
    {0x0730, 0x074A, Direction::mark},    {0x074B, 0x07A5, Direction::right},   {0x07A6, 0x07B0, Direction::mark},
    {0x07B1, 0x07EA, Direction::right},   {0x07EB, 0x07F3, Direction::mark},    {0x07F4, 0x0815, Direction::right},
    {0x0816, 0x0819, Direction::mark},    {0x081A, 0x0858, Direction::right},   {0x0859, 0x085B, Direction::mark},
    {0x085C, 0x08C9, Direction::right},   {0x08CA, 0x08FF, Direction::mark},    {0x2000, 0x200D, Direction::neutral},
    {0x200E, 0x200E, Direction::left},    {0x200F, 0x200F, Direction::right},   {0x2010, 0x206F, Direction::neutral},
    {0x2070, 0x2070, Direction::number},  {0x2074, 0x2079, Direction::number},  {0x207A, 0x207E, Direction::neutral},
    {0x2080, 0x2089, Direction::number},  {0x208A, 0x208E, Direction::neutral}, {0x20A0, 0x20CF, Direction::neutral},
    {0x20D0, 0x20F0, Direction::mark},    {0x2190, 0x2335, Direction::neutral}, {0x2500, 0x26AB, Direction::neutral},
    {0x26AD, 0x27FF, Direction::neutral}, {0x2900, 0x2BFF, Direction::neutral}, {0x2E00, 0x2E7F, Direction::neutral},
    {0x3000, 0x3004, Direction::neutral}, {0x3008, 0x3020, Direction::neutral}, {0xFB1D, 0xFB1D, Direction::right},
    {0xFB1E, 0xFB1E, Direction::mark},    {0xFB1F, 0xFB28, Direction::right},   {0xFB29, 0xFB29, Direction::neutral},
    {0xFB2A, 0xFD3D, Direction::right},   {0xFD3E, 0xFD3F, Direction::neutral}, {0xFD40, 0xFDFC, Direction::right},
    {0xFDFD, 0xFDFF, Direction::neutral}, {0xFE00, 0xFE0F, Direction::mark},    {0xFE10, 0xFE19, Direction::neutral},
    {0xFE20, 0xFE2F, Direction::mark},    {0xFE30, 0xFE6F, Direction::neutral}, {0xFE70, 0xFEFE, Direction::right},
    {0xFEFF, 0xFEFF, Direction::neutral}, {0xFF01, 0xFF0F, Direction::neutral}, {0xFF10, 0xFF19, Direction::number},
    {0xFF1A, 0xFF20, Direction::neutral}, {0xFF3B, 0xFF40, Direction::neutral}, {0xFF5B, 0xFF65, Direction::neutral},
    {0xFFE0, 0xFFFF, Direction::neutral}, {0x10800, 0x10FFF, Direction::right}, {0x1E800, 0x1EFFF, Direction::right},
};

constexpr bool isClosingPunctuation(const Cluster& cluster) {
    constexpr std::u32string_view kClosing = U".,:;!?\u060C\u061B\u061F\u2026";
    return cluster.direction == Direction::neutral && cluster.character != 0 &&
           kClosing.find(cluster.character) != std::u32string_view::npos;
}

constexpr bool isStrong(const Cluster& cluster) {
    return cluster.direction == Direction::left || cluster.direction == Direction::right;
}

/// The direction in which closing punctuation is written: its word is on one side, a blank or the end of the line on
/// the other. Neutral if it has words on both sides or on none.
Direction directionOfPunctuation(std::span<const Cluster> clusters, std::size_t at) {
    const auto isFree = [&clusters](std::size_t i) { return i >= clusters.size() || clusters[i].isBlank; };
    const bool freeBefore = at == 0 || isFree(at - 1);
    const bool freeBehind = isFree(at + 1);
    if (freeBefore == freeBehind) return Direction::neutral;
    if (isClosingPunctuation(clusters[freeBefore ? at + 1 : at - 1])) return Direction::neutral; // leaders
    return freeBehind ? Direction::left : Direction::right;
}

/// How much the punctuation between words of different directions, and at the ends of a line, says for a line from the
/// right: positive, or for one from the left: negative.
std::ptrdiff_t votesOfPunctuation(std::span<const Cluster> clusters) {
    constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
    std::ptrdiff_t votes = 0;
    std::size_t strongBefore = kNone;
    std::size_t strongBehind = 0; // at or behind the current cluster
    for (std::size_t i = 0; i < clusters.size(); ++i) {
        if (isStrong(clusters[i])) strongBefore = i;
        if (!isClosingPunctuation(clusters[i])) continue;
        const Direction direction = directionOfPunctuation(clusters, i);
        if (direction == Direction::neutral) continue;
        strongBehind = std::max(strongBehind, i + 1);
        while (strongBehind < clusters.size() && !isStrong(clusters[strongBehind]))
            ++strongBehind;
        const bool isLast = strongBehind == clusters.size();
        const bool isInside = strongBefore != kNone && !isLast && clusters[strongBefore].direction == direction &&
                              clusters[strongBehind].direction == direction;
        if (isInside) continue;
        // A label from the left, such as "1.", may be before a line from the right; and words may begin with a point.
        if (isLast && direction == Direction::left && clusters[i - 1].direction == Direction::number) continue;
        if (clusters[i].character == U'.' && direction == Direction::right && strongBefore != kNone && !isLast &&
            clusters[strongBehind].direction == Direction::left)
            continue;
        votes += direction == Direction::right ? 1 : -1;
    }
    return votes;
}

/// A number's own separators and signs: between digits, or beside them, they belong to the number (UAX #9, W4, W5).
/// The caller's clusters tell neutrals apart no further, so neutrals between two numbers without a blank count as such.
bool joinsNumbers(std::span<const Cluster> between) {
    constexpr std::size_t kLongest = 1;
    // "1, 4" in the reverse order of a line from the right, where the comma would be beside the four
    if (between.size() == 2 && between[0].isBlank && between[1].character == U',') return true;
    return between.size() <= kLongest &&
           std::none_of(between.begin(), between.end(), [](const Cluster& c) { return c.isBlank; });
}

bool isFreeOrParts(std::span<const Cluster> clusters, std::size_t at) {
    return at >= clusters.size() || clusters[at].isBlank || clusters[at].partsText;
}

/// Punctuation behind text from the left, up to a blank: `f():`, `x.`. A bracket belongs to it if its pair does.
void settleBehindWords(std::span<Cluster> clusters) {
    std::ptrdiff_t open = 0; // brackets that were opened since text from the left began
    for (std::size_t i = 0; i < clusters.size(); ++i) {
        if (clusters[i].direction == Direction::right || clusters[i].partsText) open = 0;
        if (clusters[i].direction != Direction::left) continue;
        std::size_t end = i + 1;
        for (; !isFreeOrParts(clusters, end) && clusters[end].direction == Direction::neutral; ++end) {
            const char32_t c = clusters[end].character;
            if (c == U'(' || c == U'[')
                ++open;
            else if ((c == U')' || c == U']') && open > 0)
                --open;
            else if (!isClosingPunctuation(clusters[end]) && c != U'-')
                break;
        }
        // An opening bracket at the end is the first character of what follows from the right.
        const bool isWhole = isFreeOrParts(clusters, end) && open == 0;
        if (isWhole)
            for (std::size_t k = i + 1; k < end; ++k)
                clusters[k].direction = Direction::left;
    }
}

/// Signs before a word from the left without a blank, but with one before them: `\name`, `/path`.
void settleBeforeWords(std::span<Cluster> clusters) {
    constexpr std::u32string_view kSigns = U"\\/@#*&+_~`$";
    for (std::size_t i = clusters.size(); i-- > 1;) {
        const Cluster& sign = clusters[i - 1];
        if (clusters[i].direction != Direction::left || sign.direction != Direction::neutral || sign.character == 0 ||
            kSigns.find(sign.character) == std::u32string_view::npos)
            continue;
        if (i == 1 || isFreeOrParts(clusters, i - 2)) clusters[i - 1].direction = Direction::left;
    }
}

/// On a page with so many letters from the right, Latin terms do not make the direction of a line.
constexpr float kShareOfPage = 0.15F;

/// Reverses clusters, and what side their brackets open to.
void turn(std::span<Cluster> clusters) {
    std::reverse(clusters.begin(), clusters.end());
    for (Cluster& cluster : clusters)
        cluster.isTurned = !cluster.isTurned;
}

bool goesRight(Direction direction) {
    return direction == Direction::left || direction == Direction::number;
}

constexpr char32_t kFirstRightToLeft = 0x0590;

/// Whether text has a character of a block with letters from the right.
bool mayBeFromTheRight(std::u32string_view text) {
    const auto isFromTheRight = [](char32_t c) {
        return c >= kFirstRightToLeft && (c < 0x0900 || (c >= 0xFB1D && c < 0xFF00) || (c >= 0x10800 && c < 0x1F000));
    };
    constexpr std::size_t kBlock = 64; // characters that are looked at together, without a branch for each
    while (!text.empty()) {
        const std::u32string_view block = text.substr(0, kBlock);
        std::int32_t found = 0;
        for (const char32_t c : block)
            found |= static_cast<std::int32_t>(c) >= static_cast<std::int32_t>(kFirstRightToLeft) ? 1 : 0;
        if (found != 0 && std::any_of(block.begin(), block.end(), isFromTheRight)) return true;
        text.remove_prefix(block.size());
    }
    return false;
}

} // namespace

Direction directionOf(char32_t character) {
    if (character >= 'a' && character <= 'z') return Direction::left;
    const Range* const found = std::upper_bound(std::begin(kRanges), std::end(kRanges), character,
                                                [](char32_t c, const Range& range) { return c < range.first; });
    if (found == std::begin(kRanges)) return Direction::left;
    return character <= found[-1].last ? found[-1].direction : Direction::left;
}

bool readsFromTheRight(std::span<const Cluster> clusters, bool onPageFromTheRight) {
    std::size_t left = 0;
    std::size_t right = 0;
    Direction last = Direction::neutral; // of the strong ones
    for (const Cluster& cluster : clusters) {
        if (cluster.direction != Direction::left && cluster.direction != Direction::right) continue;
        last = cluster.direction;
        (last == Direction::left ? left : right) += 1;
    }
    if (left > 0 && (right > 0 || onPageFromTheRight))
        if (const std::ptrdiff_t votes = votesOfPunctuation(clusters); votes != 0) return votes > 0;
    return right > left || (onPageFromTheRight && last == Direction::right);
}

void settlePunctuation(std::span<Cluster> clusters, bool fromTheRight) {
    const Direction line = fromTheRight ? Direction::right : Direction::left;
    for (std::size_t i = 0; i < clusters.size(); ++i) {
        if (!isClosingPunctuation(clusters[i]) || directionOfPunctuation(clusters, i) != line) continue;
        const bool isPoint = clusters[i].character == U'.'; // a word may begin with it
        clusters[i].partsText = !isPoint;
    }
    if (!fromTheRight) return;
    // A label, such as "1.", may be drawn from the left in a line from the right.
    if (clusters.size() > 1 && isClosingPunctuation(clusters.back()) &&
        clusters[clusters.size() - 2].direction == Direction::number)
        clusters.back().direction = Direction::number;
    settleBehindWords(clusters);
    settleBeforeWords(clusters);
}

bool isMostlyFromTheRight(std::u32string_view text) {
    if (!mayBeFromTheRight(text)) return false;
    std::size_t left = 0;
    std::size_t right = 0;
    for (const char32_t c : text) {
        const Direction direction = directionOf(c);
        left += direction == Direction::left ? 1 : 0;
        right += direction == Direction::right ? 1 : 0;
    }
    return static_cast<float>(right) > kShareOfPage * static_cast<float>(left + right);
}

bool endsNumbers(char32_t character) {
    return character == '%' || character == '$' || character == '#' || (character >= 0xA2 && character <= 0xA5) ||
           character == 0xB0 || character == 0x2030 || (character >= 0x20A0 && character <= 0x20CF);
}

char32_t mirrored(char32_t character) {
    constexpr std::u32string_view kPairs = U"()[]{}<>«»‹›≤≥⟨⟩";
    const std::size_t at = kPairs.find(character);
    return at == std::u32string_view::npos ? 0 : kPairs[at ^ 1U];
}

void reorder(std::span<Cluster> clusters, bool fromTheRight) {
    if (fromTheRight) turn(clusters);
    // Now the base direction is right, and sequences of the other direction are to be reversed: letters and numbers
    // from the left with what is between them in a line from the right, and the other way round.
    const auto isOther = [fromTheRight](const Cluster& c) {
        return fromTheRight ? goesRight(c.direction) : c.direction == Direction::right;
    };
    const auto isNumber = [](const Cluster& c) { return c.direction == Direction::number; };
    std::size_t i = 0;
    while (i < clusters.size()) {
        if (!isOther(clusters[i])) {
            ++i;
            continue;
        }
        std::size_t end = i + 1;
        bool onlyNumbers = isNumber(clusters[i]);
        for (std::size_t next = end; next < clusters.size(); ++next) {
            const Direction direction = clusters[next].direction;
            if (direction == Direction::neutral) continue;
            if (direction == Direction::mark) {
                if (next == end) ++end;
                continue;
            }
            if (isOther(clusters[next])) {
                // Numbers in a line from the right follow one another from the right, "1 2" is two numbers (W7, N1).
                const bool apart = fromTheRight && onlyNumbers && isNumber(clusters[next]) &&
                                   !joinsNumbers(clusters.subspan(end, next - end));
                const std::span<const Cluster> between = clusters.subspan(end, next - end);
                if (apart || std::any_of(between.begin(), between.end(), [](const Cluster& c) { return c.partsText; }))
                    break;
                onlyNumbers = onlyNumbers && isNumber(clusters[next]);
                end = next + 1;
                continue;
            }
            if (!fromTheRight && direction == Direction::number) continue; // decided by what comes after it
            break;
        }
        std::reverse(clusters.begin() + static_cast<std::ptrdiff_t>(i),
                     clusters.begin() + static_cast<std::ptrdiff_t>(end));
        if (!fromTheRight) {
            // Inside a sequence from the right, numbers go from the left again.
            for (std::size_t k = i; k < end; ++k) {
                if (!isNumber(clusters[k])) continue;
                std::size_t stop = k + 1;
                while (stop < end &&
                       (isNumber(clusters[stop]) || (stop + 1 < end && clusters[stop].direction == Direction::neutral &&
                                                     !clusters[stop].isBlank && isNumber(clusters[stop + 1]))))
                    ++stop;
                turn(clusters.subspan(k, stop - k));
                k = stop;
            }
        }
        i = end;
    }
}

} // namespace quillow::pdf
