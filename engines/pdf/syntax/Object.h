// The objects of a PDF file (ISO 32000-2, 7.3): small values whose contents belong to the document that parsed them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillow::pdf {

class Object;
struct DictionaryEntry;
struct StreamContent;

/// An indirect reference (7.3.10), or the identity of an indirect object.
struct Reference {
    std::uint32_t number = 0; ///< 0 is never an object in use
    std::uint16_t generation = 0;

    friend bool operator==(const Reference&, const Reference&) = default;
};

/// How the entries of a dictionary are stored. Sorted ones are in the order of their keys, and each key is there once.
enum class EntryOrder : std::uint8_t { asInFile, sorted };

/// The entries of a dictionary: in the order of the file, or sorted if they are many.
class Dictionary {
public:
    Dictionary() = default;
    explicit Dictionary(std::span<const DictionaryEntry> entries, EntryOrder order = EntryOrder::asInFile)
        : entries_(entries.data())
        , size_(static_cast<std::uint32_t>(entries.size()))
        , order_(order) {}

    /// The value of a key, as the file has it: it may be a reference. A null object if there is none. If a key is there
    /// twice, the last one counts.
    [[nodiscard]] Object find(std::string_view key) const;
    [[nodiscard]] std::span<const DictionaryEntry> entries() const;
    [[nodiscard]] EntryOrder order() const { return order_; }
    [[nodiscard]] bool empty() const { return size_ == 0; }

private:
    const DictionaryEntry* entries_ = nullptr;
    std::uint32_t size_ = 0;
    EntryOrder order_ = EntryOrder::asInFile;
};

/// A value of 16 bytes, copied freely. Views of it stay valid as long as the document. Every accessor accepts an object
/// of any type and returns the neutral value for the wrong one, because files put anything anywhere.
class Object {
public:
    enum class Type : std::uint8_t { null, boolean, integer, real, name, string, array, dictionary, stream, reference };

    Object() = default;
    [[nodiscard]] static Object ofBoolean(bool value);
    [[nodiscard]] static Object ofInteger(std::int64_t value);
    [[nodiscard]] static Object ofReal(double value);
    [[nodiscard]] static Object ofName(std::string_view name);
    [[nodiscard]] static Object ofString(std::string_view bytes);
    [[nodiscard]] static Object ofArray(std::span<const Object> items);
    [[nodiscard]] static Object ofDictionary(std::span<const DictionaryEntry> entries,
                                             EntryOrder order = EntryOrder::asInFile);
    [[nodiscard]] static Object ofStream(const StreamContent& stream);
    [[nodiscard]] static Object ofReference(Reference reference);

    [[nodiscard]] Type type() const { return type_; }
    [[nodiscard]] bool isNull() const { return type_ == Type::null; }
    [[nodiscard]] bool isNumber() const { return type_ == Type::integer || type_ == Type::real; }

    [[nodiscard]] bool booleanOr(bool fallback) const;
    /// An integer, or a real cut towards zero and to the range of the type.
    [[nodiscard]] std::int64_t integerOr(std::int64_t fallback) const;
    /// A finite number.
    [[nodiscard]] double numberOr(double fallback) const;
    /// A name without its slash, with #xx replaced (7.3.5). Empty if it is not a name.
    [[nodiscard]] std::string_view name() const;
    [[nodiscard]] bool isName(std::string_view name) const { return type_ == Type::name && this->name() == name; }
    /// The bytes of a string, with escapes replaced and decrypted (7.3.4). Empty if it is not a string.
    [[nodiscard]] std::string_view string() const;
    [[nodiscard]] std::span<const Object> array() const;
    /// A dictionary, or the dictionary of a stream.
    [[nodiscard]] Dictionary dictionary() const;
    /// Null if it is not a stream.
    [[nodiscard]] const StreamContent* stream() const;
    /// {0, 0} if it is not a reference.
    [[nodiscard]] Reference reference() const;

private:
    Type type_ = Type::null;
    EntryOrder order_ = EntryOrder::asInFile; ///< of a dictionary
    std::uint16_t generation_ = 0;            ///< of a reference
    std::uint32_t size_ = 0; ///< of a name, a string, an array or a dictionary; the number of a reference
    union {
        std::int64_t integer_ = 0;
        double real_;
        const char* bytes_;
        const Object* items_;
        const DictionaryEntry* entries_;
        const StreamContent* stream_;
    };
};

struct DictionaryEntry {
    std::string_view key;
    Object value;
};

inline std::span<const DictionaryEntry> Dictionary::entries() const {
    return {entries_, size_};
}

/// A stream (7.3.8).
struct StreamContent {
    Dictionary dictionary;
    std::string_view encoded; ///< the bytes in the file: encoded and perhaps encrypted
    Reference id;             ///< of the stream itself; decryption needs it
    bool isCut = false;       ///< the file ends, or the next object begins, before the data does
};

} // namespace quillow::pdf
