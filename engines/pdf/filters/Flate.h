// The Flate filter (ISO 32000-2, 7.4.4; RFC 1950, RFC 1951).
#pragma once

#include "engines/pdf/filters/Decoding.h"
#include "text/ByteBuffer.h"

#include <cstddef>
#include <memory>
#include <string_view>

struct libdeflate_decompressor;

namespace quillow::pdf {

/// Decompresses sound data as a whole, which is fast. Data that this refuses is decompressed piece by piece up to the
/// place where it breaks. The checksum is not looked at: a wrong one would change nothing.
class FlateDecoder {
public:
    /// Appends at most `limit` bytes to `out`. The zlib header may be wrong, absent, or behind a line end. Throws
    /// std::bad_alloc only.
    [[nodiscard]] Decoding decode(std::string_view encoded, std::size_t limit, text::ByteBuffer& out);

private:
    struct Free {
        void operator()(libdeflate_decompressor* decompressor) const;
    };

    [[nodiscard]] bool decodeWhole(std::string_view deflated, std::size_t limit, text::ByteBuffer& out);

    std::unique_ptr<libdeflate_decompressor, Free> decompressor_; ///< made for the first stream
};

} // namespace quillow::pdf
