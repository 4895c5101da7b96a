// Reads the chain of cross-reference tables and streams of a file (ISO 32000-2, 7.5.4 to 7.5.8).
#pragma once

#include "engines/pdf/syntax/CrossReferences.h"
#include "engines/pdf/syntax/IndirectObject.h"
#include "engines/pdf/syntax/ObjectParser.h"
#include "engines/pdf/syntax/StreamDecoder.h"

#include <optional>
#include <unordered_set>
#include <vector>

namespace quillow::pdf {

/// Sections of one file. Documents with thousands of updates have been seen.
inline constexpr std::size_t kMaximumSections = 100'000;
/// Entries of all sections of one file together.
inline constexpr std::size_t kMaximumSectionEntries = std::size_t{1} << 25;

class CrossReferenceReader {
public:
    /// Offsets count from `base`. Trailers are put into the arena. The keywords are those of the file.
    CrossReferenceReader(std::string_view file, std::size_t base, const FileKeywords& keywords, Arena& arena);

    /// The cross-references of the whole chain; std::nullopt if a part of it is damaged.
    [[nodiscard]] std::optional<CrossReferences> read(std::size_t startOffset);

private:
    /// Sections that are still to be read, the next one last.
    using Offsets = std::vector<std::int64_t>;

    [[nodiscard]] bool readSection(std::size_t position, Offsets& next);
    [[nodiscard]] bool readTable(std::size_t position, Offsets& next);
    [[nodiscard]] const char* readEntries(const char* p);
    [[nodiscard]] const char* readPlainEntries(const char* p, std::uint64_t count);
    void addEntry(std::uint64_t position, std::uint64_t generation, char kind);
    void addFreeEntries();
    [[nodiscard]] bool readHybrid(const Dictionary& trailer);

    [[nodiscard]] bool readStream(const ObjectHeader& header, Dictionary& dictionary);
    [[nodiscard]] bool addStreamEntries(const Dictionary& dictionary, std::string_view bytes);

    [[nodiscard]] std::optional<std::size_t> positionOf(std::int64_t offset) const;
    [[nodiscard]] std::size_t nearestTable(std::size_t position) const;
    [[nodiscard]] bool isVisited(std::size_t position);

    std::string_view file_;
    std::size_t base_;
    const FileKeywords* keywords_;
    Arena* arena_;
    ObjectParser parser_;
    StreamDecoder decoder_;
    CrossReferences found_;
    std::vector<Dictionary> trailers_;
    std::unordered_set<std::size_t> visited_; ///< positions of sections
    std::vector<std::uint64_t> free_;         ///< the free entries of the table that is being read
    std::uint64_t number_ = 0;                ///< of the next entry
    std::size_t entriesLeft_ = kMaximumSectionEntries;
    std::size_t parsed_ = 0; ///< bytes of trailers and of the dictionaries of streams
};

/// The offset that the last startxref of a file gives (7.5.5).
[[nodiscard]] std::optional<std::size_t> startOffsetOf(std::string_view file);

/// Where the header begins from which offsets count (7.5.2): 0 if there is none in the first bytes.
[[nodiscard]] std::size_t headerOffsetOf(std::string_view file);

} // namespace quillow::pdf
