// The control words that the reader knows (RTF 1.9.1, appendix B) and their actions. Any other word is ignored; a
// group that it opens with \* is skipped.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::rtf {

/// What to do at a control word. Comments with "value" say what Keyword::value holds.
enum class Action : std::uint8_t {
    none,
    notAWord,    ///< no letter follows the backslash
    character,   ///< value: the code point it writes
    binary,      ///< \bin
    unicode,     ///< \u
    destination, ///< value: a Destination
    // Breaks: see isBreak()
    paragraph,
    line,
    page,
    section,
    column,
    cell,
    row,
    tab,
    // Character properties
    font,
    plain,
    hidden,
    deleted,
    unicodeSkip,
    // Paragraph properties
    paragraphDefaults,
    listOverride,
    listLevel,
    // Properties of a shape
    shapeWrap, ///< \shpwr
    // Document properties
    rtf,
    defaultFont,
    ansiCodePage,
    documentCharset, ///< value: the code page that \ansi, \mac, \pc or \pca means
    // Words of the font table
    fontCharset,
    fontCodePage,
    // Words of the style sheet
    styleRelation, ///< \sbasedon, \snext
    // Words of the list tables
    numberFormat,
    levelStart,
    levelFollow,
    levelLegal,
    levelNoRestart,
    listId,
    overrideStart,
    // Words of old-style numbering (\pn); value of pnFormat: a NumberFormat
    pnLevel,
    pnBullet,
    pnBody,
    pnContinue,
    pnFormat,
    pnStart,
};

/// Whether a word ends a paragraph, a line, a page, a section, a column, a cell or a row, or is a tab.
[[nodiscard]] constexpr bool isBreak(Action action) {
    return action >= Action::paragraph && action <= Action::tab;
}

/// What a group is for, if it is more than a scope.
enum class Destination : std::uint8_t {
    body, ///< an ordinary group, or a \* destination that is read as text
    skipped,
    table, ///< skipped; a table has no paragraphs, so a paragraph in it belongs to the body
    fontTable,
    listTable,
    overrideTable,
    list,
    listLevel,
    levelText,
    listOverride,
    overrideLevel,
    oldNumbering,
    oldNumberingBefore,
    oldNumberingAfter,
    listText,
    note,
    header,
    footer,
    textBox,
    shape,
    shapeResult,
    field,
    fieldInstruction,
    fieldResult,
    unicodePair, ///< \upr
    attachment,  ///< \NeXTGraphic
};

struct Keyword {
    Action action = Action::none;
    std::uint16_t value = 0;

    [[nodiscard]] constexpr Destination destination() const {
        return action == Action::destination ? static_cast<Destination>(value) : Destination::body;
    }
};

/// The longest name that fits into the packed form. The few longer names are looked up separately.
inline constexpr std::size_t kPackedName = 16;

/// One slot of the hash table: a name as two little-endian words, padded with zeros. The name of a free slot is zero.
struct KeywordSlot {
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    Keyword keyword;
};

inline constexpr unsigned kKeywordBits = 10;
inline constexpr std::size_t kKeywordSlots = std::size_t{1} << kKeywordBits;
inline constexpr unsigned kFilterBits = 12;

/// Built at compile time with open addressing: a probe ends at the first free slot. `filter` is true for every
/// hash that a keyword has. Most words of a document are unknown, and the filter saves their probe.
struct KeywordTable {
    std::array<bool, std::size_t{1} << kFilterBits> filter{};
    std::array<KeywordSlot, kKeywordSlots> slots{};
};
extern const KeywordTable kKeywordTable;

/// A hash of kFilterBits bits. Its upper kKeywordBits are the first slot of a probe.
[[nodiscard]] constexpr std::size_t keywordHash(std::uint64_t low, std::uint64_t high) {
    // The multipliers are odd constants from the fractional part of the golden ratio and of the square root of two.
    return ((low * 0x9E3779B97F4A7C15ULL) ^ (high * 0x6A09E667F3BCC909ULL)) >> (64 - kFilterBits);
}

/// The keyword of a packed name (case matters), or one with Action::none.
[[nodiscard]] inline Keyword findKeyword(std::uint64_t low, std::uint64_t high) {
    const std::size_t hash = keywordHash(low, high);
    if (!kKeywordTable.filter[hash]) return {};
    for (std::size_t place = hash >> (kFilterBits - kKeywordBits);; place = (place + 1) % kKeywordSlots) {
        const KeywordSlot& slot = kKeywordTable.slots[place];
        if ((slot.low == low && slot.high == high) || slot.low == 0) return slot.keyword;
    }
}

/// The same for a name of any length.
[[nodiscard]] Keyword findKeyword(std::string_view name);

} // namespace quillow::rtf
