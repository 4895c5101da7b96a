// The filters of streams (ISO 32000-2, 7.4): each takes encoded bytes and appends the decoded ones.
#pragma once

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

/// The decode parameters of LZW and Flate (7.4.4.3, table 8), with the defaults of the standard.
struct PredictorParameters {
    int predictor = 1; ///< 1 none, 2 TIFF, 10 and over PNG
    int colors = 1;
    int bitsPerComponent = 8;
    int columns = 1;
    bool earlyChange = true; ///< of LZW only
};

enum class Decoding : std::uint8_t {
    complete,
    cut,     ///< the data is damaged; what came before the break was kept
    tooLong, ///< a limit was reached; what came before it was kept
    notText, ///< an image filter, or an unknown one; there are no bytes
};

/// Decodes `encoded` with one filter and appends to `out` at most `limit` bytes. Any bytes are accepted: damage ends
/// the data early. Throws std::bad_alloc only.
[[nodiscard]] Decoding decodeFilter(FilterName filter, std::string_view encoded, const PredictorParameters& parameters,
                                    std::size_t limit, text::ByteBuffer& out);

} // namespace quillow::pdf
