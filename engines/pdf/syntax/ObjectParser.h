// Reads one object from bytes (ISO 32000-2, 7.3): everything but the stream that may follow a dictionary.
#pragma once

#include "engines/pdf/crypt/Decryption.h"
#include "engines/pdf/syntax/Arena.h"
#include "engines/pdf/syntax/Object.h"
#include "text/ByteBuffer.h"

#include <vector>

namespace quillow::pdf {

/// Arrays and dictionaries inside one another; whatever is deeper is dropped.
inline constexpr std::size_t kMaximumNesting = 256;
/// Items of one array, and keys and values of one dictionary; whatever is more is dropped.
inline constexpr std::size_t kMaximumItems = std::size_t{1} << 20;
/// Dictionaries with more entries are sorted, so that a search in them is quick.
inline constexpr std::size_t kUnsortedEntries = 32;

/// How the strings of an indirect object are decrypted (7.6.3). Without `decryption` they are plain.
struct StringCipher {
    const Decryption* decryption = nullptr;
    Reference id;
};

struct ParsedObject {
    Object object;             ///< null if no object is there
    const char* end = nullptr; ///< behind the object, or at what stopped it
    bool isWhole = false;      ///< false if the object was cut: by the end of the bytes, or by a keyword such as endobj
};

/// Never recurses. Its memory is used again from one object to the next.
class ObjectParser {
public:
    /// Arrays, dictionaries and strings that differ from the file are put into the arena. Names and other strings are
    /// views of the parsed bytes.
    explicit ObjectParser(Arena& arena)
        : arena_(&arena) {}

    [[nodiscard]] ParsedObject parse(const char* p, const char* end, const StringCipher& cipher = {});

private:
    enum class Container : std::uint8_t { array, dictionary };
    struct Frame {
        std::size_t firstItem;
        Container container;
    };
    enum class Step : std::uint8_t { next, stop };

    [[nodiscard]] Step readToken();
    [[nodiscard]] Step readWord();
    [[nodiscard]] Step open(Container container, std::size_t length);
    void readRegular();
    void readName();
    void readLiteral();
    void readNumberOrReference();
    void makeReference();
    void closeArray();
    void closeDictionaries();
    void closeFrame();
    void add(Object object);
    [[nodiscard]] Object makeDictionary(std::span<const Object> items);
    [[nodiscard]] std::string_view unescapeName(std::string_view raw);
    [[nodiscard]] bool at(std::string_view bytes) const {
        return std::string_view(p_, static_cast<std::size_t>(end_ - p_)).substr(0, bytes.size()) == bytes;
    }
    [[nodiscard]] std::size_t firstItem() const { return frames_.empty() ? 0 : frames_.back().firstItem; }

    Arena* arena_;
    const char* p_ = nullptr;
    const char* end_ = nullptr;
    StringCipher cipher_;
    std::vector<Object> items_; ///< of all open containers
    std::vector<Frame> frames_; ///< the open containers
    text::ByteBuffer unescaped_;
    text::ByteBuffer decrypted_;
};

} // namespace quillow::pdf
