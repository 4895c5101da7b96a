// List numbers where the file writes none: the list table, the list override table and old-style numbering (RTF 1.9.1, "List
// Tables", "Bullets and Numbering"), and the counters that go with them.
#pragma once

#include "engines/rtf/RtfFonts.h"
#include "engines/rtf/RtfNumbers.h"
#include "engines/rtf/RtfScanner.h"

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillow::rtf {

inline constexpr std::size_t kListLevels = 9;

/// Characters of a label as the file gives them: bytes are decoded only when the level's font is known.
class LabelTemplate {
public:
    void addByte(std::uint8_t byte) { add(kByteFlag | byte); }
    void addUnicode(char32_t c) { add(static_cast<std::uint32_t>(c) & ~kByteFlag); }
    [[nodiscard]] bool empty() const { return units_.empty(); }
    /// The characters, bytes decoded in that charset; bytes under 9 stay as they are (the levels' places in a \leveltext).
    [[nodiscard]] std::u32string decode(const Charset& charset) const;

    static constexpr std::size_t kMaxUnits = 64;

private:
    static constexpr std::uint32_t kByteFlag = 0x80000000;
    void add(std::uint32_t unit) {
        if (units_.size() < kMaxUnits) units_.push_back(unit);
    }
    std::vector<std::uint32_t> units_;
};

/// What \pn and its kin say of a paragraph.
struct OldNumbering {
    enum class Kind : std::uint8_t { none, bullet, numbered };
    Kind kind = Kind::none;
    bool goesOn = false; ///< \pnlvlcont: no label, but the numbers count on after it
    int level = 0;
    int format = kFormatArabic;
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

    /// Forgets all tables and counters, as at the start of a document.
    void reset();

    /// Each reads the rest of its group, closing brace included.
    Scanner::Completeness readListTable(Scanner& scanner);
    Scanner::Completeness readOverrideTable(Scanner& scanner);
    Scanner::Completeness readOldNumbering(Scanner& scanner, OldNumbering& numbering);

    /// Whether the tables have that list override.
    [[nodiscard]] bool knows(int ls) const { return overrides_.contains(ls); }

    /// Counts one paragraph of list override `ls` at that level and answers its label with what follows the label; empty
    /// where the tables know no such list.
    [[nodiscard]] std::u32string nextLabel(int ls, int level);

    /// The same for a paragraph with old-style numbering.
    [[nodiscard]] std::u32string nextLabel(const OldNumbering& numbering);
    /// A paragraph without old-style numbering: the next one that has it starts anew.
    void endOldNumbering() { oldCounters_.fill(kNotStarted); }

    static constexpr std::size_t kMaxLists = 4096;       ///< lists over this number are not kept
    static constexpr std::size_t kMaxOverrides = 0x8000; ///< nor overrides over this number
    static constexpr std::uint32_t kMaxStart = 0x7FFF;   ///< larger starts and counters stay here

private:
    enum class Follow : std::uint8_t { tab, space, nothing };

    struct Level {
        int format = kFormatArabic;
        std::uint32_t start = 1;
        Follow follow = Follow::tab;
        bool legal = false;
        bool neverRestarts = false;
        std::u32string text; ///< characters under kListLevels stand for that level's number
    };

    static constexpr std::uint32_t kNotStarted = 0xFFFFFFFF;
    using Counters = std::array<std::uint32_t, kListLevels>;

    struct List {
        std::vector<Level> levels;
        std::size_t counters = 0; ///< index of the counters that it shares with the lists made from it
    };

    struct Override {
        static constexpr std::size_t kNoList = SIZE_MAX;
        std::size_t list = kNoList;
        std::array<std::uint32_t, kListLevels> starts{}; ///< kNotStarted where the list's own start holds
        bool startsPending = false;                      ///< its own starts take effect at its first paragraph
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
