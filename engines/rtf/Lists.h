// Computes list numbers for files that do not write them: the list table, the list override table and old-style
// numbering (RTF 1.9.1, "List Tables", "Bullets and Numbering"), with their counters.
#pragma once

#include "engines/rtf/Fonts.h"
#include "engines/rtf/Numbers.h"
#include "engines/rtf/Scanner.h"

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillow::rtf {

inline constexpr std::size_t kListLevels = 9;

/// The characters of a label as they are in the file. Bytes are decoded later, when the level's font is known.
class LabelTemplate {
public:
    void addByte(std::uint8_t byte) { add(kByteFlag | byte); }
    void addUnicode(char32_t c) { add(static_cast<std::uint32_t>(c) & ~kByteFlag); }
    [[nodiscard]] bool empty() const { return units_.empty(); }
    /// The characters, with bytes decoded in `charset`. Bytes under kListLevels stay as they are: they are
    /// placeholders for the numbers of levels in a \leveltext.
    [[nodiscard]] std::u32string decode(const Charset& charset) const;

    static constexpr std::size_t kMaxUnits = 64;

private:
    static constexpr std::uint32_t kByteFlag = 0x80000000;
    void add(std::uint32_t unit) {
        if (units_.size() < kMaxUnits) units_.push_back(unit);
    }
    std::vector<std::uint32_t> units_;
};

/// The old-style numbering of a paragraph: \pn and the words in its group.
struct OldNumbering {
    enum class Kind : std::uint8_t { none, bullet, numbered };
    Kind kind = Kind::none;
    bool goesOn = false; ///< \pnlvlcont: no label, but the numbers count on after it
    int level = 0;
    NumberFormat format = NumberFormat::arabic;
    std::uint32_t start = 1;
    std::u32string before;
    std::u32string after;

    static constexpr int kMaxLevel = 11;
};

class Lists {
public:
    Lists(FontTable& fonts, int unicodeSkip)
        : fonts_(fonts)
        , unicodeSkip_(unicodeSkip) {}

    /// Clears all tables and counters. Call at the start of a document.
    void reset();

    /// These read the rest of their group, closing brace included.
    Scanner::Completeness readListTable(Scanner& scanner);
    Scanner::Completeness readOverrideTable(Scanner& scanner);
    Scanner::Completeness readOldNumbering(Scanner& scanner, OldNumbering& numbering);

    /// Whether the tables have the list override `ls`.
    [[nodiscard]] bool knows(int ls) const { return overrides_.contains(ls); }
    /// Counts one paragraph of list override `ls` at `level`. Returns its label with the tab or blank that follows
    /// it; empty if the tables have no such list.
    [[nodiscard]] std::u32string nextLabel(int ls, int level);

    /// The same for a paragraph with old-style numbering.
    [[nodiscard]] std::u32string nextLabel(const OldNumbering& numbering);
    /// Call at a paragraph without old-style numbering: the next numbered one starts again.
    void endOldNumbering() { oldCounters_.fill(kNotStarted); }

    static constexpr std::size_t kMaxLists = 4096;       ///< further lists are ignored
    static constexpr std::size_t kMaxOverrides = 0x8000; ///< further overrides are ignored
    static constexpr std::uint32_t kMaxStart = 0x7FFF;   ///< larger starts and counters are clamped to this

private:
    enum class Follow : std::uint8_t { tab, space, nothing };

    struct Level {
        NumberFormat format = NumberFormat::arabic;
        std::uint32_t start = 1;
        Follow follow = Follow::tab;
        bool legal = false;
        bool neverRestarts = false;
        std::u32string text; ///< a character under kListLevels is a placeholder for that level's number
    };

    static constexpr std::uint32_t kNotStarted = 0xFFFFFFFF;
    using Counters = std::array<std::uint32_t, kListLevels>;

    struct List {
        std::vector<Level> levels;
        std::size_t counters = 0; ///< index into counters_, shared with the list's copies
    };

    struct Override {
        static constexpr std::size_t kNoList = SIZE_MAX;
        std::size_t list = kNoList;
        std::array<std::uint32_t, kListLevels> starts{}; ///< kNotStarted if the list's own start applies
        bool startsPending = false;                      ///< `starts` take effect at the next paragraph
    };

    struct PendingLevel;
    void finishLevel(List& list, const PendingLevel& pending) const;
    void readLevel(Scanner& scanner, List& list);
    void readTemplate(Scanner& scanner, LabelTemplate& text) const;
    void readOverride(Scanner& scanner);
    void readOverrideLevel(Scanner& scanner, Override& entry, std::size_t level);

    FontTable& fonts_;
    int unicodeSkip_;
    std::vector<List> lists_;
    std::vector<Counters> counters_;
    std::unordered_map<std::int32_t, std::size_t> listOfId_;
    std::unordered_map<int, Override> overrides_; // by \ls number
    std::array<std::uint32_t, OldNumbering::kMaxLevel + 1> oldCounters_{};
};

} // namespace quillow::rtf
