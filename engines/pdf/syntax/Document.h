// A PDF file as objects that are read when they are needed.
#pragma once

#include "engines/Result.h"
#include "engines/pdf/syntax/Object.h"
#include "text/ByteBuffer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace quillow::pdf {

/// The bytes of a stream after its filters.
struct StreamBytes {
    std::string_view bytes;
    bool complete = true; ///< false if the data is damaged or a limit was reached; `bytes` is what came before that
    bool isImage = false; ///< the last filter is one for pictures; `bytes` is empty
};

/// Opens a file by its cross-reference tables, or by a scan of all its objects if they cannot be trusted (7.5). Not
/// safe for use from several threads; a copy by `forThread` is. Throws std::bad_alloc only.
class Document {
public:
    /// `bytes` must outlive the document. Reason::locked if no password opens it, Reason::unreadable if it is
    /// encrypted and the library for that is not installed, Reason::damaged if it has no page at all after repair.
    [[nodiscard]] static Result<std::unique_ptr<Document>> open(std::string_view bytes, std::string_view password = {});
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// The same document for another thread: it shares the file, the cross-reference table and the key, and has caches
    /// of its own. Its objects live as long as it does.
    [[nodiscard]] std::unique_ptr<Document> forThread() const;

    [[nodiscard]] Dictionary trailer() const;
    [[nodiscard]] Dictionary catalog();

    /// The indirect object; null if there is none or it is damaged. Parsed once, then remembered.
    [[nodiscard]] Object load(Reference reference);
    /// The object itself or, if it is a reference, what it leads to (7.3.10). Cycles and long chains of references end
    /// in null.
    [[nodiscard]] Object resolve(const Object& object);
    /// The value of a key, resolved.
    [[nodiscard]] Object get(const Dictionary& dictionary, std::string_view key);

    /// Decrypts a stream and applies its filters. The result is a view of `buffer`, or of the file if nothing had to be
    /// done. `buffer` is cleared first.
    [[nodiscard]] StreamBytes decode(const StreamContent& stream, text::ByteBuffer& buffer);

    /// The pages of a document without a page tree, in the order of the file; empty if there is a tree.
    [[nodiscard]] std::span<const Reference> loosePages() const;

    /// Whether so many references were followed, or so much was decoded, that from now on references lead to null and
    /// streams are empty (Limits.h).
    [[nodiscard]] bool isExhausted() const;
    /// How much of the limits has been used since it was opened or copied: the largest share of one of them, from 0 to
    /// 1.
    [[nodiscard]] double usedShare() const;
    /// Whether the cross-reference tables were wrong and the objects were found by a scan.
    [[nodiscard]] bool isRepaired() const;

private:
    friend class Opening;
    class State;
    explicit Document(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

} // namespace quillow::pdf
