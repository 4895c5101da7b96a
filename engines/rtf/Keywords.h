// The control words that the reader knows (RTF 1.9.1, appendix B), and what each stands for. A word that is not here means
// nothing for the text: it is passed over, and a group that it opens with \* is skipped.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillow::rtf {

/// What to do at a control word. The comment says what Keyword::value holds.
enum class Action : std::uint8_t {
    none,
    notAWord,    ///< no letter follows the backslash
    character,   ///< value: the code point it writes
    binary,      ///< \bin
    unicode,     ///< \u
    destination, ///< value: a Destination
    // Breaks
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
    // Words of the list tables; value of numberFormat: a \levelnfc number
    numberFormat,
    levelFormat,
    levelStart,
    levelFollow,
    levelLegal,
    levelNoRestart,
    listId,
    overrideStart,
    overrideFormat,
    // Words of old-style numbering (\pn); pnFormat's value: a \levelnfc number
    pnLevel,
    pnBullet,
    pnBody,
    pnContinue,
    pnFormat,
    pnStart,
};

/// The groups that are more than a scope. What is skipped is skipped by a scan of its own.
enum class Destination : std::uint8_t {
    body, ///< an ordinary group, also one whose \* destination is read as text
    skipped,
    data,  ///< skipped even when the word is not the group's first: it carries no text that could be lost
    table, ///< skipped; has no paragraph, so one in it is the body's
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

/// Longest name that fits into the packed form; the few longer ones are looked up apart.
inline constexpr std::size_t kPackedName = 16;

/// One place of the hash table: a name as two little-endian words, padded with zeros. A free place has no name.
struct KeywordSlot {
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    Keyword keyword;
};

inline constexpr unsigned kKeywordBits = 10;
inline constexpr std::size_t kKeywordSlots = std::size_t{1} << kKeywordBits;
inline constexpr unsigned kFilterBits = 12;

/// Built at compile time. Open addressing, so that a probe ends at the first free place; before it a flag for every hash that
/// a keyword has, since most words of a document are not known and need no probe then.
struct KeywordTable {
    std::array<bool, std::size_t{1} << kFilterBits> filter{};
    std::array<KeywordSlot, kKeywordSlots> slots{};
};
extern const KeywordTable kKeywordTable;

/// A hash of kFilterBits bits; its upper kKeywordBits are a keyword's place.
[[nodiscard]] constexpr std::size_t keywordHash(std::uint64_t low, std::uint64_t high) {
    // The multipliers are odd constants from the fractional part of the golden ratio and of the square root of two.
    return ((low * 0x9E3779B97F4A7C15ULL) ^ (high * 0x6A09E667F3BCC909ULL)) >> (64 - kFilterBits);
}

/// The keyword of a packed name (case matters), or one whose action is Action::none.
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
