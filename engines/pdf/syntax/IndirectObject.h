// Reads an indirect object with its stream, if it has one, from the bytes of a file (ISO 32000-2, 7.3.8, 7.3.10).
#pragma once

#include "engines/pdf/syntax/KeywordScan.h"
#include "engines/pdf/syntax/ObjectParser.h"

namespace quillow::pdf {

/// Knows what an indirect object alone cannot tell.
class StreamLengths {
public:
    virtual ~StreamLengths() = default;
    /// The integer that a /Length refers to; -1 if there is none.
    [[nodiscard]] virtual std::int64_t lengthOf(Reference reference) = 0;
    /// The keywords of the file. Asked for only if a length is wrong.
    [[nodiscard]] virtual const Keywords& keywords() = 0;
};

struct IndirectObject {
    Reference id;
    Object object;
    std::size_t parsed = 0; ///< bytes that were parsed: those of the object without the data of its stream
};

/// Where the data of a stream begins, if the keyword is at an offset, white space before it passed over (7.3.8.1).
[[nodiscard]] std::optional<std::size_t> streamDataAt(std::string_view file, std::size_t offset);

/// Whether data of that length is followed by the end of a stream.
[[nodiscard]] bool endsStream(std::string_view file, std::size_t data, std::int64_t length);

/// `header` is that of the object. The stream is put into the arena.
[[nodiscard]] IndirectObject readIndirectObject(std::string_view file, const ObjectHeader& header, ObjectParser& parser,
                                                Arena& arena, StreamLengths& lengths, const Decryption* decryption);

} // namespace quillow::pdf
