// The filters of streams (ISO 32000-2, 7.4): each takes encoded bytes and appends the decoded ones.
#pragma once

#include "engines/pdf/filters/Decoding.h"
#include "engines/pdf/filters/Flate.h"
#include "engines/pdf/filters/Predictor.h"
#include "text/ByteBuffer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillow::pdf {

enum class FilterName : std::uint8_t {
    asciiHex,
    ascii85,
    lzw,
    flate,
    runLength,
    crypt, ///< is applied by whoever decrypts the document; as a filter it passes bytes on
    image, ///< CCITTFax, JBIG2, DCT, JPX: its output is a picture, never text
};

/// The filter by its name in a file, full or abbreviated (7.4, table 5; 8.9.7, table 92): "FlateDecode", "Fl".
[[nodiscard]] std::optional<FilterName> filterOfName(std::string_view name);

/// Decodes one stream after another. It keeps what is expensive to make, so a thread that decodes many streams has one.
class FilterDecoder {
public:
    /// Decodes `encoded` with one filter and appends to `out` at most `limit` bytes. Any bytes are accepted: damage
    /// ends the data early. `encoded` must not be in `out`. Throws std::bad_alloc only.
    [[nodiscard]] Decoding decode(FilterName filter, std::string_view encoded, const PredictorParameters& parameters,
                                  std::size_t limit, text::ByteBuffer& out);

private:
    [[nodiscard]] Decoding decodeCompressed(FilterName filter, std::string_view encoded, bool earlyChange,
                                            std::size_t limit, text::ByteBuffer& out);

    FlateDecoder flate_;
    text::ByteBuffer rows_; ///< between decompression and predictor
};

} // namespace quillow::pdf
